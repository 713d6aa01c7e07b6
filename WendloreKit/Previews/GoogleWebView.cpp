#include "Previews/GoogleWebView.h"

#include "Previews/HtmlAddress.h"

#include "Editor/QuietPage.h"
#include "Editor/Scheduler.h"

#include <QCoreApplication>
#include <QPointer>
#include <QVBoxLayout>
#include <QWebEngineNewWindowRequest>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QWebEngineView>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// The one profile that keeps what it is told. It lives as long as the program: what it has to write, it
/// writes at the end, and two of them must not write to the same folder.
QWebEngineProfile& keptProfile()
{
    static QPointer<QWebEngineProfile> kept;
    if (!kept)
        kept = new QWebEngineProfile(u"google"_s, QCoreApplication::instance());
    return *kept;
}

class GooglePage final : public QuietPage
{
public:
    GooglePage(QWebEngineProfile* profile, QObject* parent)
        : QuietPage(profile, parent)
    {
        settings()->setAttribute(QWebEngineSettings::LocalStorageEnabled, true);
        settings()->setAttribute(QWebEngineSettings::ErrorPageEnabled, true);
    }
};

} // namespace

GoogleWebView::GoogleWebView(Scheduler& scheduler, const GoogleAddresses& addresses, QWidget* parent)
    : QWidget(parent)
    , m_scheduler(scheduler)
    , m_addresses(addresses)
    , m_view(new QWebEngineView(this))
{
    auto* page = new GooglePage(&keptProfile(), m_view);
    m_view->setPage(page);
    m_view->setContextMenuPolicy(Qt::NoContextMenu);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view);
    setFocusProxy(m_view);
    connect(page, &QWebEnginePage::urlChanged, this, [this](const QUrl& address) {
        if (m_addresses.isSignIn(address))
            Q_EMIT signInWallReached();
    });
    connect(page, &QWebEnginePage::loadFinished, this, [this] { m_timeout.reset(); });
    connect(page, &QWebEnginePage::newWindowRequested, this, [this](QWebEngineNewWindowRequest& request) {
        if (request.isUserInitiated() && isForTheDesktop(request.requestedUrl()))
            Q_EMIT windowWanted(request.requestedUrl());
    });
}

GoogleWebView::~GoogleWebView() = default;

void GoogleWebView::goTo(const QUrl& address)
{
    if (m_view->url() == address)
        return;
    m_timeout = m_scheduler.after(timeOut, [this] { m_view->stop(); });
    m_view->load(address);
}

} // namespace wendlore
