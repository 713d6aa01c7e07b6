#include "Previews/ImageDecoding.h"

#include "Decoder/DecoderProcessLimits.h"
#include "Decoder/DecoderTask.h"
#include "Decoder/Picture.h"

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

ImageDecoder::ImageDecoder(const QByteArray& bytes)
    : m_pixels(memoryOfSize(decoder::mostPixels))
    , m_process(memoryFile(bytes).get(), m_pixels.get())
{}

ImageSketch ImageDecoder::sketch(const QuickLookLimits& limits)
{
    auto answer = m_process.ask(decoderValues(DecoderTask::sketchPicture), limits);
    QSize sketched;
    bool hasAlpha = false;
    ImageSketch sketch;
    if (!answer || !readAnswer(answer->values, sketched, hasAlpha, sketch.size))
        return {};
    sketch.image = pictureOf(std::move(*answer));
    return sketch;
}

DecodedImage ImageDecoder::decode(const QuickLookLimits& limits)
{
    const auto answer = m_process.ask(decoderValues(DecoderTask::decodePicture), limits);
    QSize size;
    bool hasAlpha = false;
    DecodedImage decoded;
    if (!answer || !readAnswer(answer->values, size, hasAlpha, decoded.moves))
        return {};
    decoded.image = pictureIn(m_pixels, size, hasAlpha);
    return decoded;
}

} // namespace wendlore
