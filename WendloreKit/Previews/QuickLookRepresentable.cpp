#include "Previews/QuickLookRepresentable.h"

#include "Previews/QuickLookFit.h"
#include "Previews/QuickLookPreview.h"
#include "Previews/QuickLookWebView.h"

#include "Editor/Scheduler.h"
#include "State/AppState.h"
#include "State/Services.h"

#include <QEvent>

#include <algorithm>
#include <chrono>

namespace wendlore {

namespace {

using namespace std::chrono_literals;

constexpr auto pollInterval = 100ms;
/// What the web engine can do.
constexpr double minimumZoom = 0.25;
constexpr double maximumZoom = 5.0;

/// The first web view that shows a page of a width of its own, depth first.
QuickLookWebView* findWebView(QWidget& widget)
{
    auto* webView = qobject_cast<QuickLookWebView*>(&widget);
    if (webView && webView->pageWidth() > 0)
        return webView;
    for (QWidget* child : widget.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (auto* found = findWebView(*child))
            return found;
    }
    return nullptr;
}

} // namespace

std::vector<QuickLookPreview*> QuickLookGraveyard::parked;

QuickLookRepresentable::QuickLookRepresentable(AppState& state, const FileURL& fileURL, QWidget& container)
    : m_state(state)
    , m_fileURL(fileURL)
    , m_preview(new QuickLookPreview(state, &container))
{
    m_preview->installEventFilter(this);
    connect(m_preview, &QuickLookPreview::contentShown, this, &QuickLookRepresentable::start);
    m_preview->setItem(fileURL);
    start();
}

QuickLookRepresentable::~QuickLookRepresentable()
{
    m_nextPoll.reset();
    if (!m_preview)
        return;
    m_preview->removeEventFilter(this);
    m_preview->disconnect(this);
    if (m_preview->hasItem())
        m_preview->close();
    m_preview->hide();
    m_preview->setParent(nullptr);
    QuickLookGraveyard::parked.push_back(m_preview);
}

void QuickLookRepresentable::update(const FileURL& fileURL)
{
    if (fileURL == m_fileURL || !m_preview)
        return;
    m_fileURL = fileURL;
    m_preview->setItem(fileURL);
    start();
}

void QuickLookRepresentable::start()
{
    m_webView = nullptr;
    m_originalPageWidth = 0;
    m_pollAttempts = 0;
    pollForWebView();
}

void QuickLookRepresentable::pollForWebView()
{
    m_nextPoll.reset();
    if (!m_preview)
        return;
    m_webView = findWebView(*m_preview);
    if (m_webView) {
        m_webView->installEventFilter(this);
        applyFit();
    } else if (m_pollAttempts < maximumPollAttempts) {
        ++m_pollAttempts;
        m_nextPoll = m_state.services().scheduler.after(pollInterval, [this] { pollForWebView(); });
    }
}

bool QuickLookRepresentable::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        layoutChanged();
    return QObject::eventFilter(watched, event);
}

void QuickLookRepresentable::layoutChanged()
{
    applyFit();
}

void QuickLookRepresentable::applyFit()
{
    if (m_applying || !m_webView || !m_preview)
        return;
    QuickLookFit fit{m_preview->size(), m_webView->size(), m_webView->zoomFactor(), m_originalPageWidth};
    m_originalPageWidth = fit.originalPageWidth = fit.pageWidth();
    const auto zoom = fit.zoomToApply();
    if (!zoom)
        return;
    m_applying = true;
    m_webView->setGeometry(m_preview->rect());
    m_webView->setZoomFactor(std::clamp(*zoom, minimumZoom, maximumZoom));
    m_applying = false;
}

} // namespace wendlore
