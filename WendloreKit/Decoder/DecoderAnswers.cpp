#include "Decoder/DecoderAnswers.h"

#include "Decoder/DecoderTask.h"
#include "Decoder/HeifPicture.h"
#include "Decoder/Picture.h"

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

} // namespace

DecoderAnswers::DecoderAnswers(QByteArray file)
    : m_file(std::move(file))
    , m_pdf(m_file)
{}

DecoderMessage DecoderAnswers::to(const QByteArray& question)
{
    QDataStream stream(question);
    const auto task = next<DecoderTask>(stream);
    const bool needsPages = task != DecoderTask::openPdf && task != DecoderTask::decodePicture;
    if (needsPages && !m_pdf.isOpen())
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
        return decodePicture(stream);
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

DecoderMessage DecoderAnswers::decodePicture(QDataStream& question)
{
    m_picture = readyToDraw(heifPicture(m_file, next<qint64>(question)));
    return messageOf(m_picture);
}

} // namespace wendlore
