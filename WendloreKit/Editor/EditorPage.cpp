#include "Editor/EditorPage.h"

#include "Editor/EditorRequests.h"

namespace wendlore {

EditorPage::EditorPage(QWebEngineProfile* profile, QObject* parent)
    : QuietPage(profile, parent)
{
    setUrlRequestInterceptor(new EditorRequests(this));
}

bool EditorPage::acceptNavigationRequest(const QUrl& address, NavigationType, bool isMainFrame)
{
    return isMainFrame ? mayNavigateMainFrame(address) : mayNavigateSubframe(address);
}

} // namespace wendlore
