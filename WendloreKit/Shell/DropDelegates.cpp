#include "Shell/DropDelegates.h"

#include "State/AppState.h"

#include "Vault/DiskEntry.h"
#include "Vault/FileTree.h"
#include "Vault/UndoRegistrar.h"

#include <QMimeData>

#include <algorithm>

namespace wendlore {

namespace {

bool isFile(const QUrl& item)
{
    return item.isLocalFile() && !item.toLocalFile().isEmpty();
}

/// The location of a dragged item as the tree holds it; items from elsewhere are looked at on the disk.
FileURL location(const QUrl& item, const AppState& state)
{
    const FileURL file = FileURL::file(item.toLocalFile());
    if (const auto inTree = urlInTree(file.path(), state.fileTree()))
        return *inTree;
    return diskEntry(file) == DiskEntry::Folder ? FileURL::directory(file.path()) : file;
}

} // namespace

bool loadAndMove(const QList<QUrl>& items, const FileURL& destination, AppState& state, UndoRegistrar* undo)
{
    bool isAnyAccepted = false;
    for (const QUrl& item : items) {
        if (!isFile(item))
            continue;
        isAnyAccepted = true;
        QMetaObject::invokeMethod(
            &state,
            [item, destination, undo, &state] { state.moveFile(location(item, state), destination, undo); },
            Qt::QueuedConnection);
    }
    return isAnyAccepted;
}

void FolderDropDelegate::dropEntered()
{
    droppingInto = destination;
    if (onEnter)
        onEnter(destination);
}

void FolderDropDelegate::dropExited()
{
    if (droppingInto == destination)
        droppingInto.reset();
    if (onExit)
        onExit();
}

bool FolderDropDelegate::performDrop(const QMimeData& data)
{
    droppingInto.reset();
    if (onExit)
        onExit();
    return loadAndMove(data.urls(), destination, appState, undo);
}

bool RootDropDelegate::validateDrop(const QMimeData& data) const
{
    const QList<QUrl> items = data.urls();
    return appState.vaultURL() && std::any_of(items.begin(), items.end(), &isFile);
}

void RootDropDelegate::dropEntered()
{
    droppingIntoRoot = true;
}

void RootDropDelegate::dropExited()
{
    droppingIntoRoot = false;
}

bool RootDropDelegate::performDrop(const QMimeData& data)
{
    droppingIntoRoot = false;
    return appState.vaultURL() && loadAndMove(data.urls(), *appState.vaultURL(), appState, undo);
}

} // namespace wendlore
