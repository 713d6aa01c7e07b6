#include "Editor/EditorRequests.h"

#include "Editor/VaultAddress.h"

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

using Info = QWebEngineUrlRequestInfo;

bool isVault(const QUrl& address)
{
    return address.scheme() == "vault"_L1;
}

bool isVideoHost(const QUrl& address)
{
    return address.scheme() == "https"_L1 && address.host() == "www.youtube-nocookie.com"_L1;
}

} // namespace

bool mayNavigateMainFrame(const QUrl& address)
{
    const QString path = address.path();
    return isVault(address) && address.host() == "app"_L1 &&
           (path.isEmpty() || path == u'/' || path == "/index.html"_L1);
}

bool mayNavigateSubframe(const QUrl& address)
{
    return isVideoHost(address);
}

bool mayRequest(const QUrl& address, const QUrl& initiator, QWebEngineUrlRequestInfo::ResourceType type)
{
    if (type == Info::ResourceTypeMainFrame || type == Info::ResourceTypeNavigationPreloadMainFrame)
        return mayNavigateMainFrame(address);
    if (isVideoHost(initiator))
        return address.scheme() == "https"_L1;
    if (type == Info::ResourceTypeSubFrame || type == Info::ResourceTypeNavigationPreloadSubFrame)
        return mayNavigateSubframe(address);
    if (!isVault(address))
        return false;
    return isAssetAddress(address)
               ? type == Info::ResourceTypeImage
               : type == Info::ResourceTypeImage || type == Info::ResourceTypeScript ||
                     type == Info::ResourceTypeStylesheet || type == Info::ResourceTypeFontResource;
}

void EditorRequests::interceptRequest(QWebEngineUrlRequestInfo& info)
{
    if (!mayRequest(info.requestUrl(), info.initiator(), info.resourceType()))
        info.block(true);
}

} // namespace wendlore
