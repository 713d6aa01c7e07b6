#include "Previews/PdfPageBar.h"

#include "Previews/PDFKitView.h"

#include "Look/Drawing.h"
#include "Look/FlatButton.h"
#include "Look/Metrics.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int padding = 4;
constexpr int fromBottom = 14;
constexpr double pixelsAPoint = 96.0 / 72.0; ///< at 100 %

} // namespace

PdfPageBar::PdfPageBar(PDFKitView& view)
    : QWidget(&view)
    , m_view(view)
    , m_page(new QLabel)
    , m_zoom(new QLabel)
{
    auto* smaller = new IconButton(u"minus.magnifyingglass"_s, u"Förminska"_s, u"Förminska (⌘−)"_s);
    auto* larger = new IconButton(u"plus.magnifyingglass"_s, u"Förstora"_s, u"Förstora (⌘+)"_s);
    auto* search = new IconButton(u"magnifyingglass"_s, u"Sök i dokumentet"_s, u"Sök i dokumentet (⌘F)"_s);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(metrics::toolbarMargin, padding, padding, padding);
    layout->setSpacing(padding);
    for (QWidget* part :
         {static_cast<QWidget*>(m_page), static_cast<QWidget*>(smaller), static_cast<QWidget*>(m_zoom),
          static_cast<QWidget*>(larger), static_cast<QWidget*>(search)})
        layout->addWidget(part);
    connect(smaller, &QToolButton::clicked, &view, &PDFKitView::zoomOut);
    connect(larger, &QToolButton::clicked, &view, &PDFKitView::zoomIn);
    connect(search, &QToolButton::clicked, this, &PdfPageBar::searchWanted);
    connect(&view, &PDFKitView::placeChanged, this, &PdfPageBar::showPlace);
    view.installEventFilter(this);
    showPlace();
}

bool PdfPageBar::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Show)
        standAtTheBottom();
    return QWidget::eventFilter(watched, event);
}

void PdfPageBar::showPlace()
{
    m_page->setText(u"Sida %1 av %2"_s.arg(m_view.currentPage() + 1).arg(m_view.pageCount()));
    m_zoom->setText(u"%1 %"_s.arg(qRound(m_view.scale() / pixelsAPoint * 100)));
    standAtTheBottom();
}

void PdfPageBar::standAtTheBottom()
{
    const QSize size = sizeHint();
    setGeometry((m_view.width() - size.width()) / 2, m_view.height() - size.height() - fromBottom,
                size.width(), size.height());
    raise();
}

void PdfPageBar::paintEvent(QPaintEvent*)
{
    drawFloatingGround(*this);
}

} // namespace wendlore
