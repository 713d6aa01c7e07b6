#include "Previews/ImageDecoding.h"

#include "Decoder/DecoderProcessLimits.h"
#include "Decoder/DecoderTask.h"
#include "Decoder/Picture.h"
#include "Previews/DecoderProcess.h"

#include <QFile>

namespace wendlore {

namespace {

/// A picture of that size in the memory that a decoder has filled; null when it cannot be there.
QImage pictureIn(const Descriptor& memory, QSize size, bool hasAlpha)
{
    if (size.isEmpty() || size.width() > decoder::mostPixels / bytesPerPixel / size.height())
        return {};
    auto file = std::make_unique<QFile>();
    if (!file->open(memory.get(), QIODevice::ReadOnly))
        return {};
    const qint64 bytesPerLine = qint64(bytesPerPixel) * size.width();
    const uchar* pixels = file->map(0, bytesPerLine * size.height());
    if (!pixels)
        return {};
    // What is mapped lives as long as the file object, though not the descriptor.
    return QImage(
        pixels, size.width(), size.height(), bytesPerLine,
        hasAlpha ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32,
        [](void* mapped) { delete static_cast<QFile*>(mapped); }, file.release());
}

} // namespace

DecodedImage decodeImage(const QByteArray& bytes, const QuickLookLimits& limits)
{
    const Descriptor file = memoryFile(bytes);
    const Descriptor pixels = memoryOfSize(decoder::mostPixels);
    if (!file.isOpen() || !pixels.isOpen())
        return {};
    const auto answer =
        DecoderProcess(file.get(), pixels.get()).ask(decoderValues(DecoderTask::decodePicture), limits);
    QSize size;
    bool hasAlpha = false;
    DecodedImage decoded;
    if (!answer || !readAnswer(answer->values, size, hasAlpha, decoded.moves))
        return {};
    decoded.image = pictureIn(pixels, size, hasAlpha);
    return decoded;
}

} // namespace wendlore
