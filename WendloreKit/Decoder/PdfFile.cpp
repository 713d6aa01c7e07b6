#include "Decoder/PdfFile.h"

#include "Decoder/PdfLinks.h"
#include "Decoder/Picture.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfDocument>
#include <QPdfDocumentRenderOptions>
#include <QPdfSelection>
#include <QRegularExpression>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

PdfText textOf(const QPdfSelection& selection)
{
    PdfText text{selection.text(), {}};
    for (const QPolygonF& bound : selection.bounds())
        text.areas.append(bound.boundingRect());
    return text;
}

QRectF extent(const QList<QRectF>& areas)
{
    QRectF extent;
    for (const QRectF& area : areas)
        extent |= area;
    return extent;
}

/// A pattern for `words` with any white space between them.
QRegularExpression patternOf(const QString& words)
{
    QStringList escaped;
    for (const QString& word : words.split(QRegularExpression(u"\\s+"_s), Qt::SkipEmptyParts))
        escaped.append(QRegularExpression::escape(word));
    return QRegularExpression(escaped.join(u"\\s+"_s), QRegularExpression::CaseInsensitiveOption |
                                                           QRegularExpression::UseUnicodePropertiesOption);
}

} // namespace

QPointF nearestPoint(const QList<QRectF>& areas, QPointF point)
{
    constexpr double within = 0.5; // points: a corner itself belongs to no letter
    QPointF nearest = point;
    double distance = std::numeric_limits<double>::max();
    for (const QRectF& area : areas) {
        const QRectF inner = area.adjusted(within, within, -within, -within);
        const QPointF candidate(std::clamp(point.x(), inner.left(), std::max(inner.left(), inner.right())),
                                std::clamp(point.y(), inner.top(), std::max(inner.top(), inner.bottom())));
        const QPointF way = candidate - point;
        // A line of text is wide: what lies beside it is nearer than what lies below.
        const double length = way.x() * way.x() / 64 + way.y() * way.y();
        if (length < distance) {
            distance = length;
            nearest = candidate;
        }
    }
    return nearest;
}

PdfFile::PdfFile(QByteArray bytes)
    : m_bytes(std::move(bytes))
{}

PdfFile::~PdfFile() = default;

PdfState PdfFile::open(const QString& password)
{
    m_password = password;
    m_isOpen = false;
    m_links.reset();
    m_document = std::make_unique<QPdfDocument>();
    m_buffer = std::make_unique<QBuffer>();
    m_buffer->setData(m_bytes);
    m_buffer->open(QIODevice::ReadOnly);
    m_document->setPassword(password);
    m_document->load(m_buffer.get());
    if (m_document->error() == QPdfDocument::Error::IncorrectPassword)
        return PdfState::locked;
    m_isOpen = m_document->status() == QPdfDocument::Status::Ready && m_document->pageCount() > 0;
    return m_isOpen ? PdfState::ready : PdfState::damaged;
}

int PdfFile::pageCount() const
{
    return m_document->pageCount();
}

QList<QSizeF> PdfFile::pageSizes(int first)
{
    constexpr int atATime = 100;
    QList<QSizeF> sizes;
    const int end = std::min(first, pageCount() - atATime) + atATime;
    for (int page = std::max(first, 0); page < end; ++page)
        sizes.append(m_document->pagePointSize(page));
    return sizes;
}

QImage PdfFile::render(int page, QSize whole, const QRect& clip, std::span<uchar> memory)
{
    // Pages are drawn on nothing; paper is white.
    QImage paper =
        memory.empty() ? QImage(clip.size(), QImage::Format_RGB32) : pictureIn(memory, clip.size());
    if (paper.isNull())
        return {};
    paper.fill(Qt::white);
    QPdfDocumentRenderOptions options;
    if (clip.size() != whole) {
        options.setScaledSize(whole);
        // The toolkit takes the distance from the first pixel to the last for the width.
        options.setScaledClipRect(clip.adjusted(0, 0, 1, 1));
    }
    QPainter(&paper).drawImage(0, 0, m_document->render(page, clip.size(), options));
    return paper;
}

PdfText PdfFile::text(int page)
{
    return textOf(m_document->getAllText(page));
}

PdfText PdfFile::selection(int page, QPointF from, QPointF to)
{
    return textOf(m_document->getSelection(page, from, to));
}

QList<PdfMatch> PdfFile::textBetween(PdfPoint from, PdfPoint to, QString* text)
{
    if (to.page < from.page)
        std::swap(from, to);
    QList<PdfMatch> parts;
    for (int page = from.page; page <= to.page; ++page) {
        PdfText part = textOf(m_document->getAllText(page));
        const double top = extent(part.areas).top();
        const double bottom = extent(part.areas).bottom();
        const bool beginsHere = page == from.page && from.point.y() > top;
        const bool endsHere = page == to.page && to.point.y() < bottom;
        if ((beginsHere || endsHere) && !part.areas.isEmpty()) {
            const QPointF first = beginsHere ? from.point : part.areas.first().topLeft();
            const QPointF last = endsHere ? to.point : part.areas.last().bottomRight();
            part = selection(page, nearestPoint(part.areas, first), nearestPoint(part.areas, last));
        }
        *text += (text->isEmpty() || part.text.isEmpty() ? QString() : u"\n"_s) + part.text;
        parts.append({page, part.areas});
    }
    return parts;
}

QList<PdfMatch> PdfFile::find(int page, const QString& words)
{
    QList<PdfMatch> matches;
    auto found = patternOf(words).globalMatch(m_document->getAllText(page).text());
    while (found.hasNext()) {
        const QRegularExpressionMatch match = found.next();
        if (match.capturedLength() == 0)
            break;
        const PdfText place = textOf(
            m_document->getSelectionAtIndex(page, int(match.capturedStart()), int(match.capturedLength())));
        matches.append({page, place.areas});
    }
    return matches;
}

QList<PdfLink> PdfFile::links(int page)
{
    if (!m_links)
        m_links = std::make_unique<PdfLinks>(m_bytes, m_password);
    return m_links->of(page);
}

} // namespace wendlore
