#include "Vault/ExclusiveMove.h"

#include "Vault/ExclusiveCopy.h"
#include "Vault/Log.h"

#include <filesystem>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace wendlore {

namespace {

namespace fs = std::filesystem;

/// What tells whether a file was changed: its path, size and time of change.
using Snapshot = std::vector<std::tuple<std::string, std::uintmax_t, fs::file_time_type>>;

Snapshot snapshot(const fs::path& item)
{
    std::error_code error;
    Snapshot entries;
    const auto add = [&](const fs::path& path) {
        const bool isFile = fs::is_regular_file(fs::symlink_status(path, error));
        entries.emplace_back(path.native(), isFile ? fs::file_size(path, error) : 0,
                             isFile ? fs::last_write_time(path, error) : fs::file_time_type());
    };
    add(item);
    for (auto entry = fs::recursive_directory_iterator(item, error); entry != fs::end(entry);
         entry.increment(error))
        add(entry->path());
    std::ranges::sort(entries);
    return entries;
}

/// Moves by a copy whose original is removed once nothing can be lost with it.
int moveBetweenFileSystems(const FileURL& from, const FileURL& to, FileSystemCalls& calls)
{
    if (::access(from.deletingLastPathComponent().bytes().constData(), W_OK) == -1)
        return errno;
    const fs::path original = from.bytes().toStdString();
    const Snapshot before = snapshot(original);
    if (const int error = copyExclusively(from, to, calls))
        return error;
    std::error_code error;
    if (snapshot(original) != before) {
        fs::remove_all(to.bytes().toStdString(), error);
        return EBUSY;
    }
    fs::remove_all(original, error);
    if (error)
        qCWarning(filesLog) << from.path() << "was copied, but not all of it could be removed";
    return 0;
}

/// Takes the name with an empty folder first; renaming a folder onto an empty one replaces only that.
int moveFolderOntoPlaceholder(const char* from, const char* to, FileSystemCalls& calls)
{
    if (calls.makeDirectory(AT_FDCWD, to, 0700) == -1)
        return errno;
    if (calls.rename(AT_FDCWD, from, to) == 0)
        return 0;
    const int error = errno;
    calls.remove(AT_FDCWD, to, AT_REMOVEDIR);
    return error;
}

/// Takes the name with an empty file first, which must be there untouched when it is replaced.
int moveFileOntoPlaceholder(const char* from, const char* to, FileSystemCalls& calls)
{
    Descriptor placeholder(calls, calls.openAt(AT_FDCWD, to, O_WRONLY | O_CREAT | O_EXCL, 0600));
    struct stat made = {};
    struct stat found = {};
    if (!placeholder.isOpen() || calls.status(placeholder.get(), &made) == -1)
        return errno;
    if (calls.statusAt(AT_FDCWD, to, &found) == -1 || found.st_ino != made.st_ino || found.st_size != 0)
        return EEXIST;
    if (calls.rename(AT_FDCWD, from, to) == 0)
        return 0;
    const int error = errno;
    calls.remove(AT_FDCWD, to);
    return error;
}

int moveFileByLink(const char* from, const char* to, FileSystemCalls& calls)
{
    if (calls.link(AT_FDCWD, from, AT_FDCWD, to) == -1) {
        const bool isWithoutLinks = errno == EPERM || isUnknownCall(errno);
        return isWithoutLinks ? moveFileOntoPlaceholder(from, to, calls) : errno;
    }
    if (calls.remove(AT_FDCWD, from) == 0)
        return 0;
    const int error = errno;
    calls.remove(AT_FDCWD, to);
    return error;
}

} // namespace

int moveExclusively(const FileURL& from, const FileURL& to, FileSystemCalls& calls)
{
    if (from.bytes().contains('\0') || to.bytes().contains('\0'))
        return EINVAL;
    const QByteArray sourcePath = from.bytes();
    const QByteArray targetPath = to.bytes();
    const char* const source = sourcePath.constData();
    const char* const target = targetPath.constData();
    if (calls.renameExclusively(AT_FDCWD, source, AT_FDCWD, target) == 0)
        return 0;
    if (errno == EXDEV)
        return moveBetweenFileSystems(from, to, calls);
    if (!isUnknownCall(errno))
        return errno;
    struct stat status = {};
    if (calls.statusAt(AT_FDCWD, source, &status) == -1)
        return errno;
    return S_ISDIR(status.st_mode) ? moveFolderOntoPlaceholder(source, target, calls)
                                   : moveFileByLink(source, target, calls);
}

} // namespace wendlore
