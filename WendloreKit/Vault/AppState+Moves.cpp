#include "State/AppState.h"

#include "Vault/Blanks.h"
#include "Vault/DiskEntry.h"
#include "Vault/ExclusiveMove.h"
#include "Vault/FileName.h"
#include "Vault/Log.h"
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
    return source.bytes() == target.bytes() || target.isBelow(source);
}

} // namespace

void AppState::renameFile(const FileURL& item, const QString& newName)
{
    const QByteArray stem = withoutOuterBlanks(newName).toUtf8();
    const QByteArray oldName = item.nameBytes();
    const QByteArrayView extension = extensionOf(oldName);
    const QByteArray name = extension.isEmpty() ? stem : stem + '.' + extension.toByteArray();
    const FileURL target = item.deletingLastPathComponent().appendingBytes(name, item.isDirectory());
    if (stem.isEmpty() || existsOnDisk(target))
        return;

    Operation operation(*this);
    Q_EMIT aboutToMove(item);
    const int error = moveExclusively(item, target);
    if (error == EEXIST)
        return;
    if (error == 0)
        Q_EMIT didMove(item, target);
    else
        qCWarning(filesLog).noquote() << "renameFile error:" << qt_error_string(error);
    followMove(item, target);
    reloadTree();
}

void AppState::moveFile(const FileURL& item, const FileURL& folder, UndoRegistrar* undo)
{
    const FileURL target = folder.appendingBytes(item.nameBytes(), item.isDirectory());
    if ((item.isDirectory() && wouldEndInItself(item, folder)) || existsOnDisk(target))
        return;

    Operation operation(*this);
    Q_EMIT aboutToMove(item);
    if (const int error = moveExclusively(item, target)) {
        if (error != EEXIST)
            qCWarning(filesLog).noquote() << "moveFile error:" << qt_error_string(error);
        return;
    }
    Q_EMIT didMove(item, target);
    followMove(item, target);
    reloadTree();
    if (undo == nullptr)
        return;
    undo->registerUndo(u"Flytta"_s,
                       [state = QPointer(this), target, undo, origin = item.deletingLastPathComponent()] {
                           if (state)
                               state->moveFile(target, origin, undo);
                       });
}

void AppState::followMove(const FileURL& from, const FileURL& to)
{
    if (m_selectedFile == from)
        setSelectedFile(to);
}

} // namespace wendlore
