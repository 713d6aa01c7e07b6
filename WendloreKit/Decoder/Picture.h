#pragma once

#include "Decoder/DecoderTask.h"
#include "Decoder/DecoderWire.h"

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

/// A message that carries a picture that is ready to be drawn, and has to outlive it.
[[nodiscard]] inline DecoderMessage messageOf(const QImage& picture)
{
    return {decoderValues(picture.size(), picture.hasAlphaChannel()),
            QByteArray::fromRawData(reinterpret_cast<const char*>(picture.constBits()),
                                    qsizetype(picture.sizeInBytes()))};
}

/// The picture that a message carries; null when it carries none.
[[nodiscard]] inline QImage pictureOf(DecoderMessage message)
{
    QSize size;
    bool hasAlpha = false;
    if (!readAnswer(message.values, size, hasAlpha) || size.isEmpty() ||
        size.width() > DecoderWire::maximumPixels / bytesPerPixel / size.height() ||
        message.pixels.size() != qint64(bytesPerPixel) * size.width() * size.height())
        return {};
    auto* pixels = new QByteArray(std::move(message.pixels));
    return QImage(
        reinterpret_cast<uchar*>(pixels->data()), size.width(), size.height(), bytesPerPixel * size.width(),
        hasAlpha ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32,
        [](void* owned) { delete static_cast<QByteArray*>(owned); }, pixels);
}

} // namespace wendlore
