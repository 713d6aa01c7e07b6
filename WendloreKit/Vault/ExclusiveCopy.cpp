#include "Vault/ExclusiveCopy.h"

#include "Vault/ExclusiveMove.h"
#include "Vault/FileMetadata.h"
#include "Vault/TemporaryName.h"

#include <filesystem>
#include <system_error>

#include <fcntl.h>

namespace wendlore {

namespace {

namespace fs = std::filesystem;

/// Copies what a file or folder has besides its contents, as far as this user and file system may.
void copyBelongings(const fs::path& from, const fs::path& to, FileSystemCalls& calls)
{
    const Descriptor source(calls, calls.openAt(AT_FDCWD, from.c_str(), O_RDONLY | O_NOFOLLOW));
    const Descriptor target(calls, calls.openAt(AT_FDCWD, to.c_str(), O_RDONLY | O_NOFOLLOW));
    struct stat status = {};
    struct stat made = {};
    if (!source.isOpen() || !target.isOpen() || calls.status(source.get(), &status) == -1 ||
        calls.status(target.get(), &made) == -1)
        return;
    status.st_uid = made.st_uid;
    status.st_gid = made.st_gid;
    (void)copyMetadata(calls, source.get(), status, target.get());
    const timespec times[] = {status.st_atim, status.st_mtim};
    calls.setTimes(target.get(), times);
}

void copyBelongingsOfAll(const fs::path& from, const fs::path& to, FileSystemCalls& calls)
{
    std::error_code error;
    copyBelongings(from, to, calls);
    if (!fs::is_directory(fs::symlink_status(from, error)))
        return;
    for (auto entry = fs::recursive_directory_iterator(from, error); entry != fs::end(entry);
         entry.increment(error))
        copyBelongings(entry->path(), to / entry->path().lexically_relative(from), calls);
}

int syncItem(const FileURL& item, FileSystemCalls& calls)
{
    struct stat status = {};
    if (calls.statusAt(AT_FDCWD, item.bytes().constData(), &status) == -1)
        return errno;
    if (S_ISLNK(status.st_mode))
        return 0;
    const Descriptor file(calls, calls.openAt(AT_FDCWD, item.bytes().constData(), O_RDONLY));
    if (!file.isOpen())
        return errno;
    const bool isFolder = S_ISDIR(status.st_mode);
    return (isFolder ? calls.syncFileSystem(file.get()) : calls.sync(file.get())) == 0 ? 0 : errno;
}

} // namespace

int copyExclusively(const FileURL& from, const FileURL& to, FileSystemCalls& calls)
{
    struct stat status = {};
    if (from.bytes().contains('\0') || to.bytes().contains('\0'))
        return EINVAL;
    if (calls.statusAt(AT_FDCWD, to.bytes().constData(), &status) == 0)
        return EEXIST;
    const FileURL copy = to.deletingLastPathComponent().appendingBytes(temporaryName(), false);
    const fs::path source = from.bytes().toStdString();
    const fs::path target = copy.bytes().toStdString();

    std::error_code error;
    fs::copy(source, target, fs::copy_options::recursive | fs::copy_options::copy_symlinks, error);
    int failure = error.value();
    if (failure == 0) {
        copyBelongingsOfAll(source, target, calls);
        failure = syncItem(copy, calls);
    }
    if (failure == 0)
        failure = moveExclusively(copy, to, calls);
    if (failure == 0) {
        const FileURL folder = to.deletingLastPathComponent();
        const Descriptor directory(
            calls, calls.openAt(AT_FDCWD, folder.bytes().constData(), O_RDONLY | O_DIRECTORY));
        calls.sync(directory.get());
        return 0;
    }
    fs::remove_all(target, error);
    return failure;
}

} // namespace wendlore
