#pragma once

#include "Vault/FileURL.h"

#include <QJsonValue>
#include <QString>

#include <cstdint>
#include <functional>
#include <optional>

namespace wendlore {

/// The web view that shows the editor page, as the controller sees it.
class EditorWebView
{
public:
    /// Names one content that the host put into the page. Every message carries the generation that the page
    /// showed when it was posted, so that an edit which arrives late is known to belong to the note it was
    /// typed in.
    using Generation = std::uint64_t;

    /// What a page does before anything else: a script, and the generation of the content that it puts into
    /// the page (0 when it brings none).
    struct Beginning final
    {
        QString script;
        Generation generation = 0;
    };

    /// What the view reports and asks, always on the main thread. Every member is set by the controller.
    struct Events final
    {
        std::function<void(const QString& name, const QJsonValue& body, Generation generation)> message;
        std::function<void()> contentProcessTerminated;
        std::function<void()> navigationFailed;
        /// The open bucket's root, for the assets that notes refer to.
        std::function<std::optional<FileURL>()> vaultRoot;
        /// What the page that is being loaded is to begin with. Its "ready" carries the generation that it
        /// has come to show by then.
        std::function<Beginning()> beginning;
    };

    virtual ~EditorWebView() = default;

    virtual void setEvents(Events events) = 0;
    /// Starts loading the page at `address`.
    virtual void load(const QString& address) = 0;
    /// Runs `script` in the page; results and errors are ignored.
    virtual void evaluate(const QString& script) = 0;
    /// Runs `script`, which puts a new content into the page, and from that very task on marks messages with
    /// `generation`. The page confirms with a message "shown".
    virtual void evaluate(const QString& script, Generation generation) = 0;
    /// Calls `done` once every message that the page has posted so far was delivered (at once when no page is
    /// loaded).
    virtual void drain(std::function<void()> done) = 0;
};

} // namespace wendlore
