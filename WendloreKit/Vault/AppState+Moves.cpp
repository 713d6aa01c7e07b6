#include "State/AppState.h"

#include "Vault/Blanks.h"
#include "Vault/DiskEntry.h"
#include "Vault/ExclusiveMove.h"
#include "Vault/FileName.h"
#include "Vault/Log.h"
#include "Vault/Relocation.h"
#include "Vault/UndoRegistrar.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// Whether the folder `item` would end in itself or somewhere below.
bool wouldEndInItself(const FileURL& item, const FileURL& folder)
{
    const FileURL source = item.standardized();
    const FileURL target = folder.standardized();
    return source.hasPathOf(target) || target.isBelow(source);
}

} // namespace

void AppState::renameFile(const FileURL& item, const QString& newName)
{
    const QByteArray stem = withoutOuterBlanks(newName).toUtf8();
    const QByteArray oldName = item.nameBytes();
    const QByteArrayView extension = extensionOf(oldName);
    const QByteArray name = extension.isEmpty() ? stem : stem + '.' + extension.toByteArray();
    const FileURL target = item.deletingLastPathComponent().appendingBytes(name, item.isDirectory());
    if (stem.isEmpty() || stem.contains('/') || existsOnDisk(target))
        return;

    Operation operation(*this);
    const FileURL origin = item; // may be the selection itself, which is about to change
    Q_EMIT aboutToMove(origin);
    const int error = moveExclusively(origin, target);
    if (error == EEXIST)
        return;
    if (error == 0)
        announceMove(origin, target);
    else
        qCWarning(filesLog).noquote() << "renameFile error:" << qt_error_string(error);
    followMove(origin, target);
    reloadTreeAfterMove(origin, target);
}

void AppState::moveFile(const FileURL& item, const FileURL& folder, UndoRegistrar* undo)
{
    const FileURL target = folder.appendingBytes(item.nameBytes(), item.isDirectory());
    if ((item.isDirectory() && wouldEndInItself(item, folder)) || existsOnDisk(target))
        return;

    Operation operation(*this);
    const FileURL origin = item; // may be the selection itself, which is about to change
    Q_EMIT aboutToMove(origin);
    if (const int error = moveExclusively(origin, target)) {
        if (error != EEXIST)
            qCWarning(filesLog).noquote() << "moveFile error:" << qt_error_string(error);
        return;
    }
    announceMove(origin, target);
    followMove(origin, target);
    reloadTreeAfterMove(origin, target);
    if (undo == nullptr)
        return;
    undo->registerUndo(u"Flytta"_s,
                       [state = QPointer(this), target, undo, back = origin.deletingLastPathComponent()] {
                           if (state)
                               state->moveFile(target, back, undo);
                       });
}

void AppState::announceMove(const FileURL& from, const FileURL& to)
{
    if (m_selectedFolder && relocated(*m_selectedFolder, from, to) != *m_selectedFolder)
        setSelectedFolder(relocated(*m_selectedFolder, from, to));
    Q_EMIT didMove(from, to);
}

void AppState::followMove(const FileURL& from, const FileURL& to)
{
    if (m_selectedFile == from)
        setSelectedFile(to);
}

} // namespace wendlore
