#include "Previews/ImageDecoding.h"

#include "Decoder/DecoderTask.h"

namespace wendlore {

ImageDecoder::ImageDecoder(const QByteArray& bytes)
    : m_process(memoryFile(bytes).get())
{}

ImageSketch ImageDecoder::sketch(const QuickLookLimits& limits)
{
    const auto answer = m_process.ask(decoderValues(DecoderTask::sketchPicture), limits);
    QSize sketched;
    bool hasAlpha = false;
    ImageSketch sketch;
    if (!answer || !readAnswer(*answer, sketched, hasAlpha, sketch.size))
        return {};
    sketch.image = m_process.picture(sketched, hasAlpha).copy();
    return sketch;
}

DecodedImage ImageDecoder::decode(const QuickLookLimits& limits)
{
    const auto answer = m_process.ask(decoderValues(DecoderTask::decodePicture), limits);
    QSize size;
    bool hasAlpha = false;
    DecodedImage decoded;
    if (!answer || !readAnswer(*answer, size, hasAlpha, decoded.moves))
        return {};
    decoded.image = m_process.picture(size, hasAlpha);
    return decoded;
}

} // namespace wendlore
