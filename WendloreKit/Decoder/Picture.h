#pragma once

#include <QColorSpace>
#include <QImage>

namespace wendlore {

/// Of a picture that is ready to be drawn.
inline constexpr int bytesPerPixel = 4;

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
