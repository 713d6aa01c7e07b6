#include "Editor/QuietPage.h"

#include <QLoggingCategory>
#include <QWebEngineFullScreenRequest>
#include <QWebEngineSettings>

namespace wendlore {

namespace {

Q_LOGGING_CATEGORY(pageLog, "wendlore.page", QtWarningMsg)

} // namespace

QuietPage::QuietPage(QWebEngineProfile* profile, QObject* parent)
    : QWebEnginePage(profile, parent)
{
    restrict();
    connect(this, &QWebEnginePage::featurePermissionRequested, this,
            [this](const QUrl& origin, Feature feature) {
                setFeaturePermission(origin, feature, PermissionDeniedByUser);
            });
    connect(this, &QWebEnginePage::fullScreenRequested, this,
            [](QWebEngineFullScreenRequest request) { request.reject(); });
}

void QuietPage::restrict()
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

QWebEnginePage* QuietPage::createWindow(WebWindowType)
{
    return nullptr;
}

QStringList QuietPage::chooseFiles(FileSelectionMode, const QStringList&, const QStringList&)
{
    return {};
}

void QuietPage::javaScriptAlert(const QUrl&, const QString&) {}

bool QuietPage::javaScriptConfirm(const QUrl&, const QString&)
{
    return false;
}

bool QuietPage::javaScriptPrompt(const QUrl&, const QString&, const QString&, QString*)
{
    return false;
}

void QuietPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString& message, int line,
                                         const QString& source)
{
    qCInfo(pageLog).noquote() << source << line << message;
}

} // namespace wendlore
