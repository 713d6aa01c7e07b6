#include "Previews/QuickLookWebView.h"

#include "Previews/QuickLookStyle.h"

#include "Editor/QuietPage.h"
#include "Look/Colors.h"
#include "Vault/ReadFile.h"

#include <QBuffer>
#include <QEvent>
#include <QFile>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QWebEngineUrlRequestInterceptor>
#include <QWebEngineUrlRequestJob>
#include <QWebEngineUrlScheme>
#include <QWebEngineUrlSchemeHandler>

#include <algorithm>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr auto schemeName = "quicklook";
const QString start = u"quicklook://page/"_s;

const QByteArray head = R"(<!doctype html><html lang="sv"><head><meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline';
 img-src quicklook:; media-src quicklook:; font-src quicklook:; base-uri 'none'; form-action 'none'">
<meta name="referrer" content="no-referrer"><style>)";

bool isOwnAddress(const QUrl& address)
{
    return address.scheme() == QLatin1StringView(schemeName) && address.host() == "page"_L1;
}

/// Blocks everything that is not the page's own.
class Requests final : public QWebEngineUrlRequestInterceptor
{
public:
    using QWebEngineUrlRequestInterceptor::QWebEngineUrlRequestInterceptor;

    void interceptRequest(QWebEngineUrlRequestInfo& info) override
    {
        info.block(!isOwnAddress(info.requestUrl()));
    }
};

/// A file that begins with other bytes than it has on the disk.
class ChangedFile final : public QIODevice
{
public:
    /// Takes the open descriptor over.
    ChangedFile(int descriptor, QByteArray beginning)
        : m_beginning(std::move(beginning))
    {
        if (m_file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
            open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    [[nodiscard]] qint64 size() const override { return m_file.size(); }

protected:
    qint64 readData(char* bytes, qint64 size) override
    {
        if (pos() < m_beginning.size()) {
            const qint64 count = std::min(size, m_beginning.size() - pos());
            std::copy_n(m_beginning.constData() + pos(), count, bytes);
            return count;
        }
        return m_file.seek(pos()) ? m_file.read(bytes, size) : -1;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray m_beginning;
    QFile m_file;
};

void reply(QWebEngineUrlRequestJob& job, const QByteArray& type, QIODevice* body)
{
    // The engine reads the body on a thread of its own for as long as the request lives.
    QObject::connect(&job, &QObject::destroyed, body, &QObject::deleteLater);
    job.reply(type, body);
}

void reply(QWebEngineUrlRequestJob& job, const QByteArray& type, const QByteArray& bytes)
{
    auto* body = new QBuffer;
    body->setData(bytes);
    reply(job, type, body);
}

} // namespace

/// Serves one preview: its page, what the page shows beside, and the previewed file.
class QuickLookWebView::Handler final : public QWebEngineUrlSchemeHandler
{
public:
    Handler(QuickLookPage page, const QWidget& view, QObject* parent)
        : QWebEngineUrlSchemeHandler(parent)
        , m_page(std::move(page))
        , m_view(view)
    {}

    void requestStarted(QWebEngineUrlRequestJob* job) override
    {
        const QString path = job->requestUrl().path();
        const auto resource = m_page.resources.constFind(path.mid(3));
        if (path == "/"_L1)
            reply(*job, "text/html",
                  head + quickLookStyle(Colors::of(m_view.palette())) + "</style></head><body>" +
                      m_page.body + "</body></html>");
        else if (path.startsWith("/r/"_L1) && resource != m_page.resources.constEnd())
            reply(*job, resource->mimeType, resource->bytes);
        else if (path == "/file"_L1 && m_page.streamed)
            replyFile(*job);
        else
            job->fail(QWebEngineUrlRequestJob::UrlNotFound);
    }

private:
    void replyFile(QWebEngineUrlRequestJob& job) const
    {
        const Descriptor opened = openRegularFile(*m_page.streamed);
        auto file = opened.isOpen()
                        ? std::make_unique<ChangedFile>(::dup(opened.get()), m_page.streamedBeginning)
                        : nullptr;
        if (file && file->isOpen())
            reply(job, m_page.streamedType, file.release());
        else
            job.fail(QWebEngineUrlRequestJob::UrlNotFound);
    }

    QuickLookPage m_page;
    const QWidget& m_view;
};

/// Stays where it is; places within it can be gone to.
class QuickLookWebView::Page final : public QuietPage
{
public:
    explicit Page(QWebEngineProfile* profile)
        : QuietPage(profile)
    {
        settings()->setAttribute(QWebEngineSettings::JavascriptEnabled, false);
        settings()->setAttribute(QWebEngineSettings::PlaybackRequiresUserGesture, true);
        setUrlRequestInterceptor(new Requests(this));
    }

protected:
    bool acceptNavigationRequest(const QUrl& address, NavigationType, bool isMainFrame) override
    {
        return isMainFrame && isOwnAddress(address) && address.path() == u"/"_s;
    }
};

void registerQuickLookScheme()
{
    QWebEngineUrlScheme scheme(schemeName);
    scheme.setSyntax(QWebEngineUrlScheme::Syntax::Host);
    scheme.setFlags(QWebEngineUrlScheme::SecureScheme | QWebEngineUrlScheme::CorsEnabled);
    QWebEngineUrlScheme::registerScheme(scheme);
}

QuickLookWebView::QuickLookWebView(QuickLookPage page, QWidget* parent)
    : PreviewWebView(parent)
    , m_pageWidth(page.width)
    , m_profile(std::make_unique<QWebEngineProfile>())
    , m_handler(new Handler(std::move(page), *this, m_profile.get()))
    , m_page(new Page(m_profile.get()))
{
    m_profile->installUrlSchemeHandler(schemeName, m_handler);
    showPage(*m_page);
    connect(m_page, &QWebEnginePage::renderProcessTerminated, this, &QuickLookWebView::failed);
    loadPage();
}

QuickLookWebView::~QuickLookWebView()
{
    // The page goes before its profile.
    delete m_page;
}

void QuickLookWebView::loadPage()
{
    m_page->setBackgroundColor(Colors::of(palette()).paper);
    m_page->load(QUrl(start));
}

void QuickLookWebView::changeEvent(QEvent* event)
{
    PreviewWebView::changeEvent(event);
    if (event->type() != QEvent::PaletteChange || m_page->backgroundColor() == Colors::of(palette()).paper)
        return;
    m_page->setBackgroundColor(Colors::of(palette()).paper);
    m_page->triggerAction(QWebEnginePage::Reload); // keeps the place
}

} // namespace wendlore
