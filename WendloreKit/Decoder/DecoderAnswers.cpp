#include "Decoder/DecoderAnswers.h"

#include "Decoder/DecoderTask.h"
#include "Decoder/QuickLookReading.h"
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
    return task >= DecoderTask::drawPage && task <= DecoderTask::linksOfPage;
}

QByteArray answerOf(const std::optional<QuickLookPage>& page)
{
    return page ? decoderValues(*page) : QByteArray();
}

} // namespace

DecoderAnswers::DecoderAnswers(int file, std::span<uchar> memory)
    : m_descriptor(file)
    , m_memory(memory)
{}

const QByteArray& DecoderAnswers::bytes()
{
    if (m_file.isOpen() || !m_file.open(m_descriptor, QIODevice::ReadOnly))
        return m_bytes;
    if (const uchar* const mapped = m_file.map(0, m_file.size()))
        m_bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(mapped), m_file.size());
    return m_bytes;
}

PdfFile& DecoderAnswers::pdf()
{
    return m_pdf ? *m_pdf : m_pdf.emplace(bytes());
}

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
    if (needsPages(task) && !pdf().isOpen())
        return {};
    switch (task) {
    case DecoderTask::openPdf:
        return openPdf(stream);
    case DecoderTask::drawPage:
        return drawPage(stream);
    case DecoderTask::sizesOfPages:
        return sizesOfPages(stream);
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
    case DecoderTask::previewFile:
    case DecoderTask::previewDocument:
    case DecoderTask::pagesOfDocument:
        return preview(task, stream);
    }
    return {};
}

QByteArray DecoderAnswers::openPdf(QDataStream& question)
{
    const PdfState state = pdf().open(next<QString>(question));
    return state == PdfState::ready ? decoderValues(state, pdf().pageCount(), pdf().pageSizes(0))
                                    : decoderValues(state, 0, QList<QSizeF>());
}

QByteArray DecoderAnswers::drawPage(QDataStream& question)
{
    const int page = next<int>(question);
    const QSize whole = next<QSize>(question);
    const QImage drawn = pdf().render(page, whole, next<QRect>(question), m_memory);
    return drawn.isNull() ? QByteArray() : picture(drawn);
}

QByteArray DecoderAnswers::sizesOfPages(QDataStream& question)
{
    return decoderValues(pdf().pageSizes(next<int>(question)));
}

QByteArray DecoderAnswers::textOfPage(QDataStream& question)
{
    return decoderValues(pdf().text(next<int>(question)));
}

QByteArray DecoderAnswers::textBetween(QDataStream& question)
{
    const auto from = next<PdfPoint>(question);
    QString text;
    const QList<PdfMatch> parts = pdf().textBetween(from, next<PdfPoint>(question), &text);
    return decoderValues(text, parts);
}

QByteArray DecoderAnswers::findText(QDataStream& question)
{
    const int page = next<int>(question);
    return decoderValues(pdf().find(page, next<QString>(question)));
}

QByteArray DecoderAnswers::linksOfPage(QDataStream& question)
{
    return decoderValues(pdf().links(next<int>(question)));
}

QByteArray DecoderAnswers::decodePicture()
{
    return picture(rasterPicture(bytes(), m_memory), MovingPicture::isIn(bytes()));
}

QByteArray DecoderAnswers::sketchPicture()
{
    const PictureSketch sketch = rasterSketch(bytes(), m_memory);
    return picture(sketch.picture, sketch.size);
}

QByteArray DecoderAnswers::nextFrame()
{
    if (!m_movingPicture)
        m_movingPicture.emplace(bytes());
    const auto frame = m_movingPicture->next();
    return frame ? picture(frame->picture, frame->milliseconds) : QByteArray();
}

QByteArray DecoderAnswers::preview(DecoderTask task, QDataStream& question) const
{
    const QuickLookFile file(m_descriptor, next<QString>(question));
    const QuickLookLimits limits{std::chrono::milliseconds(next<qint64>(question))};
    switch (task) {
    case DecoderTask::previewFile:
        return answerOf(readFilePreview(file, limits));
    case DecoderTask::previewDocument:
        return answerOf(readDocumentPreview(file, limits));
    default:
        return decoderValues(readDocumentPages(file, limits));
    }
}

} // namespace wendlore
