#pragma once

#include <QUrl>
#include <QWebEngineUrlRequestInterceptor>

namespace wendlore {

/// What the editor page may show in its own frame: itself and nothing else.
[[nodiscard]] bool mayNavigateMainFrame(const QUrl& address);
/// What a frame inside the page may show: a video, at the host that sets no cookies.
[[nodiscard]] bool mayNavigateSubframe(const QUrl& address);
/// Whether the page, or a frame of `initiator` inside it, may ask for `address` as a resource of that type.
[[nodiscard]] bool mayRequest(const QUrl& address, const QUrl& initiator,
                              QWebEngineUrlRequestInfo::ResourceType type);

/// Blocks everything that a note could make the engine fetch: nothing leaves for the network but what a video
/// needs once the user has started it, and files of the bucket are images, never script or style.
class EditorRequests final : public QWebEngineUrlRequestInterceptor
{
    Q_OBJECT

public:
    using QWebEngineUrlRequestInterceptor::QWebEngineUrlRequestInterceptor;

    void interceptRequest(QWebEngineUrlRequestInfo& info) override;
};

} // namespace wendlore
