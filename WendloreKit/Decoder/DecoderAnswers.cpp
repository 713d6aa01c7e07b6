#include "Decoder/DecoderAnswers.h"

#include "Decoder/DecoderTask.h"
#include "Decoder/RasterPicture.h"

#include <QImage>

#include <algorithm>

namespace wendlore {

namespace {

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

} // namespace

DecoderAnswers::DecoderAnswers(QByteArray file, std::span<uchar> memory)
    : m_file(std::move(file))
    , m_memory(memory)
    , m_pdf(m_file)
{}

/// The answer that is a picture and `values`, and its pixels where they are looked for.
template <typename... Values>
QByteArray DecoderAnswers::picture(const QImage& picture, const Values&... values)
{
    if (picture.sizeInBytes() > qsizetype(m_memory.size()))
        return {};
    if (!picture.isNull() && picture.constBits() != m_memory.data())
        std::copy_n(picture.constBits(), picture.sizeInBytes(), m_memory.data());
    return decoderValues(picture.size(), picture.hasAlphaChannel(), values...);
}

QByteArray DecoderAnswers::to(const QByteArray& question)
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

QByteArray DecoderAnswers::openPdf(QDataStream& question)
{
    const PdfState state = m_pdf.open(next<QString>(question));
    return decoderValues(state, state == PdfState::ready ? m_pdf.pageSizes() : QList<QSizeF>());
}

QByteArray DecoderAnswers::drawPage(QDataStream& question)
{
    const int page = next<int>(question);
    const QSize whole = next<QSize>(question);
    return picture(m_pdf.render(page, whole, next<QRect>(question)));
}

QByteArray DecoderAnswers::textOfPage(QDataStream& question)
{
    return decoderValues(m_pdf.text(next<int>(question)));
}

QByteArray DecoderAnswers::textBetween(QDataStream& question)
{
    const auto from = next<PdfPoint>(question);
    QString text;
    const QList<PdfMatch> parts = m_pdf.textBetween(from, next<PdfPoint>(question), &text);
    return decoderValues(text, parts);
}

QByteArray DecoderAnswers::findText(QDataStream& question)
{
    const int page = next<int>(question);
    return decoderValues(m_pdf.find(page, next<QString>(question)));
}

QByteArray DecoderAnswers::linksOfPage(QDataStream& question)
{
    return decoderValues(m_pdf.links(next<int>(question)));
}

QByteArray DecoderAnswers::decodePicture()
{
    return picture(rasterPicture(m_file, m_memory), MovingPicture::isIn(m_file));
}

QByteArray DecoderAnswers::sketchPicture()
{
    const PictureSketch sketch = rasterSketch(m_file, m_memory);
    return picture(sketch.picture, sketch.size);
}

QByteArray DecoderAnswers::nextFrame()
{
    if (!m_movingPicture)
        m_movingPicture.emplace(m_file);
    const auto frame = m_movingPicture->next();
    return frame ? picture(frame->picture, frame->milliseconds) : QByteArray();
}

} // namespace wendlore
