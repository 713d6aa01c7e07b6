#include "Editor/EditorPage.h"

#include "Editor/EditorRequests.h"

#include <QLoggingCategory>
#include <QWebEngineFullScreenRequest>
#include <QWebEngineSettings>

namespace wendlore {

namespace {

Q_LOGGING_CATEGORY(pageLog, "wendlore.page", QtWarningMsg)

} // namespace

EditorPage::EditorPage(QWebEngineProfile* profile, QObject* parent)
    : QWebEnginePage(profile, parent)
{
    restrict();
    setUrlRequestInterceptor(new EditorRequests(this));
    connect(this, &QWebEnginePage::featurePermissionRequested, this,
            [this](const QUrl& origin, Feature feature) {
                setFeaturePermission(origin, feature, PermissionDeniedByUser);
            });
    connect(this, &QWebEnginePage::fullScreenRequested, this,
            [](QWebEngineFullScreenRequest request) { request.reject(); });
}

void EditorPage::restrict()
{
    using Settings = QWebEngineSettings;
    for (const auto attribute :
         {Settings::JavascriptCanOpenWindows, Settings::JavascriptCanAccessClipboard,
          Settings::LocalStorageEnabled, Settings::LocalContentCanAccessRemoteUrls,
          Settings::LocalContentCanAccessFileUrls, Settings::HyperlinkAuditingEnabled,
          Settings::ErrorPageEnabled, Settings::PluginsEnabled, Settings::FullScreenSupportEnabled,
          Settings::ScreenCaptureEnabled, Settings::WebGLEnabled, Settings::AutoLoadIconsForPage,
          Settings::FocusOnNavigationEnabled, Settings::AllowRunningInsecureContent,
          Settings::AllowGeolocationOnInsecureOrigins, Settings::DnsPrefetchEnabled,
          Settings::PdfViewerEnabled, Settings::NavigateOnDropEnabled})
        settings()->setAttribute(attribute, false);
    settings()->setUnknownUrlSchemePolicy(Settings::DisallowUnknownUrlSchemes);
}

bool EditorPage::acceptNavigationRequest(const QUrl& address, NavigationType, bool isMainFrame)
{
    return isMainFrame ? mayNavigateMainFrame(address) : mayNavigateSubframe(address);
}

QWebEnginePage* EditorPage::createWindow(WebWindowType)
{
    return nullptr;
}

QStringList EditorPage::chooseFiles(FileSelectionMode, const QStringList&, const QStringList&)
{
    return {};
}

void EditorPage::javaScriptAlert(const QUrl&, const QString&) {}

bool EditorPage::javaScriptConfirm(const QUrl&, const QString&)
{
    return false;
}

bool EditorPage::javaScriptPrompt(const QUrl&, const QString&, const QString&, QString*)
{
    return false;
}

void EditorPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString& message, int line,
                                          const QString& source)
{
    qCInfo(pageLog).noquote() << source << line << message;
}

} // namespace wendlore
