#include "Decoder/DecoderAnswers.h"

#include "Decoder/DecoderTask.h"
#include "Decoder/Picture.h"
#include "Decoder/RasterPicture.h"

namespace wendlore {

namespace {

template <typename... Values>
DecoderMessage answer(const Values&... values)
{
    return {decoderValues(values...), {}};
}

template <typename Value>
Value next(QDataStream& question)
{
    Value value;
    question >> value;
    return value;
}

/// Whether the question is about the pages of a document.
bool needsPages(DecoderTask task)
{
    return task != DecoderTask::openPdf && task != DecoderTask::decodePicture &&
           task != DecoderTask::sketchPicture && task != DecoderTask::nextFrame;
}

/// Brings the picture's pixels to where they are looked for.
void place(const QImage& picture, std::span<uchar> memory)
{
    if (!picture.isNull() && picture.constBits() != memory.data())
        std::copy_n(picture.constBits(), picture.sizeInBytes(), memory.data());
}

} // namespace

DecoderAnswers::DecoderAnswers(QByteArray file, std::span<uchar> memory)
    : m_file(std::move(file))
    , m_memory(memory)
    , m_pdf(m_file)
{}

DecoderMessage DecoderAnswers::to(const QByteArray& question)
{
    QDataStream stream(question);
    const auto task = next<DecoderTask>(stream);
    if (needsPages(task) && !m_pdf.isOpen())
        return {};
    switch (task) {
    case DecoderTask::openPdf:
        return openPdf(stream);
    case DecoderTask::drawPage:
        return drawPage(stream);
    case DecoderTask::textOfPage:
        return textOfPage(stream);
    case DecoderTask::textBetween:
        return textBetween(stream);
    case DecoderTask::findText:
        return findText(stream);
    case DecoderTask::linksOfPage:
        return linksOfPage(stream);
    case DecoderTask::decodePicture:
        return decodePicture();
    case DecoderTask::sketchPicture:
        return sketchPicture();
    case DecoderTask::nextFrame:
        return nextFrame();
    }
    return {};
}

DecoderMessage DecoderAnswers::openPdf(QDataStream& question)
{
    const PdfState state = m_pdf.open(next<QString>(question));
    return answer(state, state == PdfState::ready ? m_pdf.pageSizes() : QList<QSizeF>());
}

DecoderMessage DecoderAnswers::drawPage(QDataStream& question)
{
    const int page = next<int>(question);
    const QSize whole = next<QSize>(question);
    m_picture = m_pdf.render(page, whole, next<QRect>(question));
    return messageOf(m_picture);
}

DecoderMessage DecoderAnswers::textOfPage(QDataStream& question)
{
    return answer(m_pdf.text(next<int>(question)));
}

DecoderMessage DecoderAnswers::textBetween(QDataStream& question)
{
    const auto from = next<PdfPoint>(question);
    QString text;
    const QList<PdfMatch> parts = m_pdf.textBetween(from, next<PdfPoint>(question), &text);
    return answer(text, parts);
}

DecoderMessage DecoderAnswers::findText(QDataStream& question)
{
    const int page = next<int>(question);
    return answer(m_pdf.find(page, next<QString>(question)));
}

DecoderMessage DecoderAnswers::linksOfPage(QDataStream& question)
{
    return answer(m_pdf.links(next<int>(question)));
}

DecoderMessage DecoderAnswers::decodePicture()
{
    const QImage picture = rasterPicture(m_file, m_memory);
    place(picture, m_memory);
    return answer(picture.size(), picture.hasAlphaChannel(), MovingPicture::isIn(m_file));
}

DecoderMessage DecoderAnswers::sketchPicture()
{
    const PictureSketch sketch = rasterSketch(m_file, m_memory);
    m_picture = sketch.picture;
    DecoderMessage message = messageOf(m_picture);
    message.values += decoderValues(sketch.size);
    return message;
}

DecoderMessage DecoderAnswers::nextFrame()
{
    if (!m_movingPicture)
        m_movingPicture.emplace(m_file);
    const auto frame = m_movingPicture->next();
    if (!frame)
        return {};
    m_picture = frame->picture;
    DecoderMessage message = messageOf(m_picture);
    message.values += decoderValues(frame->milliseconds);
    return message;
}

} // namespace wendlore
