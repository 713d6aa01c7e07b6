#include "Previews/PreviewWebView.h"

#include "Previews/HtmlAddress.h"
#include "Previews/WebFindBar.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QWebEngineContextMenuRequest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr double zoomStep = 1.1;
/// What the web engine can do.
constexpr double minimumZoom = 0.25;
constexpr double maximumZoom = 5.0;

/// A link's target as it is read: of a file its path.
QString shownTarget(const QUrl& address)
{
    const auto file = fileOfAddress(address);
    return file ? file->path() : address.toDisplayString();
}

} // namespace

PreviewWebView::PreviewWebView(QWidget* parent)
    : QWebEngineView(parent)
{}

void PreviewWebView::showPage(QWebEnginePage& page)
{
    setPage(&page);
    new WebFindBar(*this);
    connect(&page, &QWebEnginePage::linkHovered, this, [this](const QString& link) {
        setToolTip(link.isEmpty() ? QString() : shownTarget(QUrl(link)));
    });
}

void PreviewWebView::zoomIn()
{
    setZoomFactor(std::min(zoomFactor() * zoomStep, maximumZoom));
}

void PreviewWebView::zoomOut()
{
    setZoomFactor(std::max(zoomFactor() / zoomStep, minimumZoom));
}

void PreviewWebView::resetZoom()
{
    setZoomFactor(1);
}

void PreviewWebView::contextMenuEvent(QContextMenuEvent* event)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const auto& [webAction, title] : {std::pair(QWebEnginePage::Copy, u"Kopiera"_s),
                                           std::pair(QWebEnginePage::SelectAll, u"Markera allt"_s)}) {
        QAction* const pageAction = page()->action(webAction);
        menu->addAction(title, pageAction, &QAction::trigger)->setEnabled(pageAction->isEnabled());
    }
    const auto* request = lastContextMenuRequest();
    if (const QUrl link = request ? request->linkUrl() : QUrl(); !link.isEmpty())
        menu->addAction(u"Kopiera länk"_s, [link] { QApplication::clipboard()->setText(shownTarget(link)); });
    menu->popup(event->globalPos());
}

} // namespace wendlore
