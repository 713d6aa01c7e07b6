#pragma once

#include "Vault/FileURL.h"

#include <QList>
#include <QUrl>

#include <functional>
#include <optional>

class QMimeData;

namespace wendlore {

class AppState;
class UndoRegistrar;

/// Moves the dragged `items` that are files into `destination`, one after the other, once the event loop runs
/// again. True when there is at least one.
bool loadAndMove(const QList<QUrl>& items, const FileURL& destination, AppState& state, UndoRegistrar* undo);

/// What a drag over one folder of the sidebar does. Drops on it move.
class FolderDropDelegate final
{
public:
    FileURL destination;
    /// The folder that the sidebar shows as target.
    std::optional<FileURL>& droppingInto;
    AppState& appState;
    UndoRegistrar* undo = nullptr;
    /// Begins and ends the opening of a folder that the drag rests on.
    std::function<void(const FileURL& folder)> onEnter;
    std::function<void()> onExit;

    void dropEntered();
    void dropExited();
    bool performDrop(const QMimeData& data);
};

/// What a drag over the empty part of the sidebar does: the bucket's root is the target. Drops on it move.
class RootDropDelegate final
{
public:
    /// Whether the sidebar shows itself as target.
    bool& droppingIntoRoot;
    AppState& appState;
    UndoRegistrar* undo = nullptr;

    [[nodiscard]] bool validateDrop(const QMimeData& data) const;
    void dropEntered();
    void dropExited();
    bool performDrop(const QMimeData& data);
};

} // namespace wendlore
