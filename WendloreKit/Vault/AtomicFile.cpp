#include "Vault/AtomicFile.h"

#include "Vault/FileWrite.h"
#include "Vault/InterruptedWrites.h"
#include "Vault/TemporaryName.h"

#include <QMutex>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>

namespace wendlore {

namespace {

struct BackupDirectory final
{
    QMutex mutex;
    FileURL url;
};
Q_GLOBAL_STATIC(BackupDirectory, backups)

FileURL backupDirectory()
{
    const QMutexLocker locker(&backups->mutex);
    return backups->url;
}

/// Removes the leftover `name`, unless a living write holds its lock.
bool removeLeftover(int directory, const char* name)
{
    FileSystemCalls& calls = FileSystemCalls::real();
    const Descriptor file(calls, calls.openAt(directory, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK));
    struct stat status = {};
    if (!file.isOpen() || calls.status(file.get(), &status) == -1 || !S_ISREG(status.st_mode))
        return false;
    const bool isInUse = calls.lock(file.get(), LOCK_EX | LOCK_NB) == -1 && errno == EWOULDBLOCK;
    return !isInUse && calls.remove(directory, name) == 0;
}

} // namespace

void AtomicFile::setBackupDirectory(const FileURL& directory)
{
    const QMutexLocker locker(&backups->mutex);
    backups->url = directory;
}

int AtomicFile::settleInterruptedWrites(RecoveredTexts& recovered)
{
    return InterruptedWrites(FileSystemCalls::real(), backupDirectory()).settle(recovered);
}

WriteResult AtomicFile::write(const FileURL& url, const QByteArray& bytes)
{
    return FileWrite(FileSystemCalls::real(), backupDirectory(), url, bytes).write();
}

WriteResult AtomicFile::writeOver(const FileURL& url, const QByteArray& seen, const QByteArray& bytes)
{
    return FileWrite(FileSystemCalls::real(), backupDirectory(), url, bytes).writeOver(seen);
}

WriteResult AtomicFile::create(const FileURL& url, const QByteArray& bytes)
{
    return FileWrite(FileSystemCalls::real(), {}, url, bytes).create();
}

int AtomicFile::sweepLeftovers(const FileURL& directory)
{
    DIR* const folder = ::opendir(directory.bytes().constData());
    if (folder == nullptr)
        return 0;
    int swept = 0;
    while (const dirent* entry = ::readdir(folder)) {
        if (isTemporaryName(entry->d_name) && removeLeftover(::dirfd(folder), entry->d_name))
            ++swept;
    }
    ::closedir(folder);
    return swept;
}

} // namespace wendlore
