#pragma once

#include <QColorSpace>
#include <QImage>

#include <span>

namespace wendlore {

/// Of a picture that is ready to be drawn.
inline constexpr int bytesPerPixel = 4;

/// A picture of `size` whose pixels lie in `memory`; null when they do not fit.
[[nodiscard]] inline QImage pictureIn(std::span<uchar> memory, QSize size)
{
    if (size.isEmpty() || size.width() > qint64(memory.size()) / bytesPerPixel / size.height())
        return {};
    return {memory.data(), size.width(), size.height(), bytesPerPixel * size.width(), QImage::Format_RGB32};
}

/// `image` in the screen's colours and a format that is drawn quickly.
[[nodiscard]] inline QImage readyToDraw(QImage image)
{
    const QColorSpace screen(QColorSpace::SRgb);
    if (image.colorSpace().isValid() && image.colorSpace() != screen)
        image.convertToColorSpace(screen);
    const auto format = image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
    return std::move(image).convertToFormat(format);
}

} // namespace wendlore
