#include "Previews/PDFKitView.h"

#include "Previews/PdfPageImages.h"
#include "Previews/PdfPageLinks.h"

#include "Editor/Scheduler.h"
#include "Look/Colors.h"

#include <QPainter>
#include <QScrollBar>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr double zoomStep = 1.2;
constexpr int lineStep = 40;
constexpr int matchOpacity = 90;
constexpr int currentMatchOpacity = 170;

QColor withOpacity(QColor color, int opacity)
{
    color.setAlpha(opacity);
    return color;
}

} // namespace

PDFKitView::PDFKitView(Scheduler& scheduler, std::shared_ptr<PdfDocument> document, QList<QSizeF> pages,
                       QWidget* parent)
    : QAbstractScrollArea(parent)
    , m_scheduler(scheduler)
    , m_document(std::move(document))
    , m_pages(std::move(pages))
    , m_images(new PdfPageImages(scheduler, m_document, this))
    , m_links(new PdfPageLinks(scheduler, m_document, this))
{
    setFrameShape(QFrame::NoFrame);
    setBackgroundRole(sideRole); // of the scroll bars
    setFocusPolicy(Qt::StrongFocus);
    // Always there, so that fitting the width does not change the width.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    viewport()->setCursor(Qt::IBeamCursor);
    viewport()->setMouseTracking(true);
    viewport()->grabGesture(Qt::PinchGesture);
    for (QScrollBar* bar : {horizontalScrollBar(), verticalScrollBar()})
        bar->setSingleStep(lineStep);
    connect(m_images, &PdfPageImages::drawn, this, [this](int page) {
        viewport()->update();
        m_links->want(page);
        if (!m_readingSizes)
            readSizes();
    });
}

PDFKitView::~PDFKitView() = default;

QPointF PDFKitView::scrolled() const
{
    return QPointF(horizontalScrollBar()->value(), verticalScrollBar()->value());
}

QRectF PDFKitView::visibleArea() const
{
    return {scrolled(), QSizeF(viewport()->size())};
}

int PDFKitView::currentPage() const
{
    return m_layout.pageCount() > 0 ? m_layout.pageAt(visibleArea().center().y()) : 0;
}

void PDFKitView::fitWidth()
{
    m_isFitted = true;
    layOut(PdfLayout::scaleToFit(m_pages, viewport()->width()), scrolled(), {});
}

void PDFKitView::zoomBy(double factor, QPointF anchor)
{
    m_isFitted = false;
    layOut(std::clamp(m_layout.scale() * factor, minimumScale, maximumScale), scrolled() + anchor, anchor);
}

void PDFKitView::zoomIn()
{
    zoomBy(zoomStep, QRectF(viewport()->rect()).center());
}

void PDFKitView::zoomOut()
{
    zoomBy(1 / zoomStep, QRectF(viewport()->rect()).center());
}

void PDFKitView::layOut(double scale, QPointF place, QPointF anchor)
{
    const bool isFirst = m_layout.pageCount() == 0;
    const PdfPoint kept = isFirst ? PdfPoint() : m_layout.pointAt(place);
    m_layout = PdfLayout(m_pages, scale, viewport()->width());
    const QSizeF room = viewport()->size();
    horizontalScrollBar()->setRange(0, qRound(std::max(0.0, m_layout.size().width() - room.width())));
    verticalScrollBar()->setRange(0, qRound(std::max(0.0, m_layout.size().height() - room.height())));
    horizontalScrollBar()->setPageStep(qRound(room.width()));
    verticalScrollBar()->setPageStep(qRound(room.height()));
    if (!isFirst && !m_pages.isEmpty()) {
        const QPointF at = m_layout.placeOf(kept.page, {kept.point, QSizeF()}).topLeft() - anchor;
        horizontalScrollBar()->setValue(qRound(at.x()));
        verticalScrollBar()->setValue(qRound(at.y()));
    }
    wantVisiblePages();
    viewport()->update();
    Q_EMIT placeChanged();
}

void PDFKitView::wantVisiblePages()
{
    if (m_layout.pageCount() == 0)
        return;
    const double pixelRatio = viewport()->devicePixelRatioF();
    const QRectF visible = visibleArea();
    const int first = m_layout.pageAt(visible.top());
    const int last = m_layout.pageAt(visible.bottom());
    QList<PdfWanted> wanted;
    const auto add = [&](int page) {
        const QRectF area = m_layout.page(page);
        const QSize whole = (area.size() * pixelRatio).toSize();
        const QRectF seen = visible.intersected(area).translated(-area.topLeft());
        const QRect part = QRectF(seen.topLeft() * pixelRatio, seen.size() * pixelRatio).toAlignedRect();
        wanted.append({page, whole, part.intersected(QRect(QPoint(), whole))});
    };
    for (int page = first; page <= last; ++page)
        add(page);
    // The next ones are about to be seen.
    for (const int page : {last + 1, first - 1}) {
        if (page >= 0 && page < m_layout.pageCount())
            add(page);
    }
    m_images->want(wanted);
}

void PDFKitView::readSizes()
{
    m_readingSizes = m_scheduler.inBackground([this, document = m_document]() -> std::function<void()> {
        if (document->readPageSizes())
            return [this] { readSizes(); };
        return [this, pages = document->pageSizes()] { setSizes(pages); };
    });
}

void PDFKitView::setSizes(const QList<QSizeF>& pages)
{
    if (pages == m_pages)
        return;
    m_pages = pages;
    if (m_isFitted)
        fitWidth();
    else
        layOut(m_layout.scale(), scrolled(), {});
}

void PDFKitView::showPage(int page)
{
    showPlace({page, {}});
}

void PDFKitView::showPlace(const PdfPoint& place)
{
    if (m_layout.pageCount() == 0)
        return;
    const int page = std::clamp(place.page, 0, m_layout.pageCount() - 1);
    const QRectF area = m_layout.placeOf(page, {place.point, QSizeF()});
    verticalScrollBar()->setValue(qRound(area.top() - PdfLayout::margin));
}

void PDFKitView::showMatches(const QList<PdfMatch>& matches, int current)
{
    m_matches = matches;
    m_currentMatch = current;
    if (current >= 0 && current < matches.size() && !matches.at(current).areas.isEmpty()) {
        const PdfMatch& match = matches.at(current);
        const QRectF place = m_layout.placeOf(match.page, match.areas.first());
        if (!visibleArea().contains(place)) {
            horizontalScrollBar()->setValue(qRound(place.center().x() - viewport()->width() / 2.0));
            verticalScrollBar()->setValue(qRound(place.center().y() - viewport()->height() / 2.0));
        }
    }
    viewport()->update();
}

void PDFKitView::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), Colors::of(palette()).side);
    if (m_layout.pageCount() == 0)
        return;
    const QRectF visible = visibleArea();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(-scrolled());
    const int last = m_layout.pageAt(visible.bottom());
    for (int page = m_layout.pageAt(visible.top()); page <= last; ++page)
        paintPage(painter, page);
}

void PDFKitView::paintPage(QPainter& painter, int page) const
{
    const QRectF area = m_layout.page(page);
    painter.fillRect(area, Qt::white);
    for (const PdfPageImage& drawing : m_images->imagesOf(page)) {
        if (drawing.image.isNull()) {
            painter.setPen(Colors::of(ColorScheme::light).muted);
            painter.drawText(area, Qt::AlignCenter, u"Sidan kan inte visas"_s);
            continue;
        }
        paintDrawing(painter, area, drawing);
    }
    // The paper is white in every appearance, and so are the colours on it.
    const Colors& colors = Colors::of(ColorScheme::light);
    const auto mark = [&](const PdfMatch& match, const QColor& color) {
        if (match.page != page)
            return;
        for (const QRectF& line : match.areas)
            painter.fillRect(m_layout.placeOf(page, line), color);
    };
    painter.save();
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    for (int match = 0; match < m_matches.size(); ++match) {
        const bool isCurrent = match == m_currentMatch;
        mark(m_matches.at(match), isCurrent ? withOpacity(Qt::yellow, currentMatchOpacity)
                                            : withOpacity(colors.highlight.darker(110), matchOpacity * 2));
    }
    for (const PdfMatch& part : m_selection)
        mark(part, withOpacity(colors.accent, matchOpacity));
    painter.restore();
    painter.setPen(Colors::of(palette()).line);
    painter.drawRect(area.adjusted(-0.5, -0.5, 0.5, 0.5));
}

void PDFKitView::paintDrawing(QPainter& painter, const QRectF& area, const PdfPageImage& drawing) const
{
    const double ratio = viewport()->devicePixelRatioF();
    if (drawing.whole == (area.size() * ratio).toSize()) {
        // As large as it is drawn: on whole pixels of the screen, so that it is sharp, and soon there.
        painter.save();
        painter.resetTransform();
        painter.scale(1 / ratio, 1 / ratio);
        painter.drawImage(((area.topLeft() - scrolled()) * ratio).toPoint() + drawing.part.topLeft(),
                          drawing.image);
        painter.restore();
        return;
    }
    const double across = area.width() / drawing.whole.width();
    const double down = area.height() / drawing.whole.height();
    const QRectF target(area.x() + drawing.part.x() * across, area.y() + drawing.part.y() * down,
                        drawing.part.width() * across, drawing.part.height() * down);
    painter.drawImage(target, drawing.image);
}

void PDFKitView::select(PdfPoint from, PdfPoint to)
{
    m_selecting =
        m_scheduler.inBackground([this, document = m_document, from, to]() -> std::function<void()> {
            QString text;
            const QList<PdfMatch> parts = document->textBetween(from, to, &text);
            return [this, parts, text] {
                m_selection = parts;
                m_selectedText = text;
                viewport()->update();
                Q_EMIT selectionChanged();
            };
        });
}

void PDFKitView::selectAll()
{
    if (!m_pages.isEmpty())
        select({0, {}}, {pageCount() - 1, QPointF(m_pages.last().width(), m_pages.last().height())});
}

} // namespace wendlore
