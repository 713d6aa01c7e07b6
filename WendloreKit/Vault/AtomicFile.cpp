#include "Vault/AtomicFile.h"

#include "Vault/FileWrite.h"
#include "Vault/InterruptedWrites.h"
#include "Vault/ReadFile.h"
#include "Vault/RecoveredTexts.h"
#include "Vault/TemporaryName.h"

#include <QByteArrayList>
#include <QMutex>

#include <ctime>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>

using namespace Qt::StringLiterals;

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

/// Removes a leftover, unless a living write holds its lock.
bool removeLeftover(const FileURL& leftover)
{
    FileSystemCalls& calls = FileSystemCalls::real();
    const QByteArray path = leftover.bytes();
    const char* const name = path.constData();
    const Descriptor file(calls, calls.openAt(AT_FDCWD, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK));
    struct stat status = {};
    if (!file.isOpen() || calls.status(file.get(), &status) == -1 || !S_ISREG(status.st_mode))
        return false;
    const bool isInUse = calls.lock(file.get(), LOCK_EX | LOCK_NB) == -1 && errno == EWOULDBLOCK;
    return !isInUse && calls.remove(AT_FDCWD, name) == 0;
}

/// The names in `directory` that are `wanted`.
QByteArrayList namesIn(const FileURL& directory, bool (*wanted)(QByteArrayView))
{
    DIR* const folder = ::opendir(directory.bytes().constData());
    if (folder == nullptr)
        return {};
    QByteArrayList names;
    while (const dirent* entry = ::readdir(folder)) {
        if (wanted(entry->d_name))
            names.append(entry->d_name);
    }
    ::closedir(folder);
    return names;
}

bool isOlderThan(const FileURL& file, std::chrono::seconds age)
{
    struct stat status = {};
    return FileSystemCalls::real().statusAt(AT_FDCWD, file.bytes().constData(), &status) == 0 &&
           ::time(nullptr) - status.st_ctim.tv_sec >= age.count();
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

WriteResult AtomicFile::writeOver(const FileURL& url, const QByteArray& seen, const QByteArray& bytes,
                                  FileSystemCalls& calls)
{
    return FileWrite(calls, backupDirectory(), url, bytes).writeOver(seen);
}

WriteResult AtomicFile::create(const FileURL& url, const QByteArray& bytes)
{
    return FileWrite(FileSystemCalls::real(), {}, url, bytes).create();
}

int AtomicFile::sweepLeftovers(const FileURL& directory)
{
    int swept = 0;
    for (const QByteArray& name : namesIn(directory, isTemporaryName))
        swept += removeLeftover(directory.entry(std::string_view(name), false)) ? 1 : 0;
    return swept;
}

int AtomicFile::recoverDisplaced(const FileURL& directory, RecoveredTexts& recovered,
                                 std::chrono::seconds age)
{
    int count = 0;
    for (const QByteArray& name : namesIn(directory, isDisplacedName)) {
        const FileURL file = directory.entry(std::string_view(name), false);
        const auto bytes = isOlderThan(file, age) ? readFile(file) : std::nullopt;
        const FileURL note = directory.appending(u"Ersatt version.md"_s);
        const auto isKept = [&] {
            return bytes->isEmpty() ||
                   !recovered.keep(note, *bytes, u"a save was cut off right after it"_s).isEmpty();
        };
        if (bytes && isKept() && FileSystemCalls::real().remove(AT_FDCWD, file.bytes().constData()) == 0)
            ++count;
    }
    return count;
}

} // namespace wendlore
