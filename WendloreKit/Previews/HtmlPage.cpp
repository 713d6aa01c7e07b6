#include "Previews/HtmlPage.h"

#include "Previews/HtmlAddress.h"

#include <QWebEngineNewWindowRequest>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// The engine guards other files of a custom scheme from scripts, but for the pixels of images once they are
/// drawn on a canvas. So canvases keep what they show to themselves.
const QString closedCanvases = uR"JS((() => {
  const refuse = () => { throw new DOMException('The canvas cannot be read.', 'SecurityError'); };
  const close = (type, ...names) => {
    for (const name of names) {
      if (type && name in type.prototype)
        Object.defineProperty(type.prototype, name, {value: refuse});
    }
  };
  close(window.HTMLCanvasElement, 'toDataURL', 'toBlob', 'captureStream', 'transferControlToOffscreen');
  close(window.CanvasRenderingContext2D, 'getImageData');
  close(window.OffscreenCanvasRenderingContext2D, 'getImageData');
  close(window.OffscreenCanvas, 'convertToBlob', 'transferToImageBitmap');
  for (const name of ['createImageBitmap', 'VideoFrame', 'Worker', 'SharedWorker'])
    Object.defineProperty(window, name, {value: refuse});
})();)JS"_s;

} // namespace

HtmlPage::HtmlPage(const FileURL& file, QWebEngineProfile* profile, QObject* parent)
    : QuietPage(profile, parent)
    , m_file(file)
{
    setUrlRequestInterceptor(new HtmlRequests(this));
    // Otherwise mail addresses are never asked about.
    settings()->setUnknownUrlSchemePolicy(QWebEngineSettings::AllowAllUnknownUrlSchemes);
    QWebEngineScript script;
    script.setSourceCode(closedCanvases);
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setWorldId(QWebEngineScript::MainWorld);
    script.setRunsOnSubFrames(true);
    scripts().insert(script);
    connect(this, &QWebEnginePage::newWindowRequested, this, [this](QWebEngineNewWindowRequest& request) {
        if (request.isUserInitiated())
            follow(request.requestedUrl());
    });
}

bool HtmlPage::acceptNavigationRequest(const QUrl& address, NavigationType type, bool)
{
    const bool isWanted = type != NavigationTypeLinkClicked || follow(address);
    // For a scheme that the engine does not know, the toolkit would start a program of the desktop.
    return isWanted && isKnownToTheEngine(address);
}

bool HtmlPage::follow(const QUrl& link)
{
    switch (actionOfLink(link, m_file)) {
    case LinkAction::openOutside:
        Q_EMIT addressClicked(link);
        return false;
    case LinkAction::openFile:
        Q_EMIT fileClicked(*fileOfAddress(link));
        return false;
    case LinkAction::follow:
        break;
    }
    return true;
}

void HtmlRequests::interceptRequest(QWebEngineUrlRequestInfo& info)
{
    if (info.requestUrl().isLocalFile())
        info.block(true);
}

} // namespace wendlore
