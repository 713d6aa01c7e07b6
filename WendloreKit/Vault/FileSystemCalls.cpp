#include "Vault/FileSystemCalls.h"

#include <cstdio>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace wendlore {

FileSystemCalls& FileSystemCalls::real()
{
    static FileSystemCalls calls;
    return calls;
}

int FileSystemCalls::refusal(const char*)
{
    return 0;
}

size_t FileSystemCalls::accepted(size_t size)
{
    return size;
}

template <typename Call>
auto FileSystemCalls::make(const char* name, const Call& call) -> decltype(call())
{
    decltype(call()) result = -1;
    do {
        if (const int error = refusal(name)) {
            errno = error;
            result = -1;
        } else {
            result = call();
        }
    } while (result == -1 && errno == EINTR);
    return result;
}

int FileSystemCalls::openAt(int directory, const char* name, int flags, mode_t mode)
{
    return make("openat", [&] { return ::openat(directory, name, flags | O_CLOEXEC, mode); });
}

int FileSystemCalls::close(int descriptor)
{
    const int error = refusal("close");
    // Not repeated when interrupted: the kernel has given the descriptor back by then.
    if (::close(descriptor) == -1 && errno != EINTR)
        return -1;
    errno = error;
    return error == 0 || error == EINTR ? 0 : -1;
}

int FileSystemCalls::statusAt(int directory, const char* name, struct stat* status)
{
    return make("fstatat", [&] { return ::fstatat(directory, name, status, AT_SYMLINK_NOFOLLOW); });
}

int FileSystemCalls::status(int descriptor, struct stat* status)
{
    return make("fstat", [&] { return ::fstat(descriptor, status); });
}

ssize_t FileSystemCalls::readLink(int directory, const char* name, char* target, size_t size)
{
    return make("readlinkat", [&] { return ::readlinkat(directory, name, target, size); });
}

ssize_t FileSystemCalls::read(int descriptor, char* bytes, size_t size, off_t position)
{
    return make("pread", [&] { return ::pread(descriptor, bytes, size, position); });
}

ssize_t FileSystemCalls::write(int descriptor, const char* bytes, size_t size, off_t position)
{
    return make("pwrite", [&] { return ::pwrite(descriptor, bytes, accepted(size), position); });
}

int FileSystemCalls::truncate(int descriptor, off_t size)
{
    return make("ftruncate", [&] { return ::ftruncate(descriptor, size); });
}

int FileSystemCalls::reserve(int descriptor, off_t size)
{
    return make("fallocate", [&] { return ::fallocate(descriptor, FALLOC_FL_KEEP_SIZE, 0, size); });
}

int FileSystemCalls::sync(int descriptor)
{
    return make("fsync", [&] { return ::fsync(descriptor); });
}

int FileSystemCalls::syncFileSystem(int descriptor)
{
    return make("syncfs", [&] { return ::syncfs(descriptor); });
}

int FileSystemCalls::lock(int descriptor, int operation)
{
    return make("flock", [&] { return ::flock(descriptor, operation); });
}

int FileSystemCalls::rename(int directory, const char* from, const char* to)
{
    return make("renameat", [&] { return ::renameat(directory, from, directory, to); });
}

int FileSystemCalls::renameExclusively(int fromDirectory, const char* from, int toDirectory, const char* to)
{
    return make("renameat2",
                [&] { return ::renameat2(fromDirectory, from, toDirectory, to, RENAME_NOREPLACE); });
}

int FileSystemCalls::exchange(int directory, const char* one, const char* other)
{
    return make("exchange", [&] { return ::renameat2(directory, one, directory, other, RENAME_EXCHANGE); });
}

int FileSystemCalls::link(int fromDirectory, const char* from, int toDirectory, const char* to)
{
    return make("linkat", [&] { return ::linkat(fromDirectory, from, toDirectory, to, 0); });
}

int FileSystemCalls::makeDirectory(int directory, const char* name, mode_t mode)
{
    return make("mkdirat", [&] { return ::mkdirat(directory, name, mode); });
}

int FileSystemCalls::remove(int directory, const char* name, int flags)
{
    return make("unlinkat", [&] { return ::unlinkat(directory, name, flags); });
}

ssize_t FileSystemCalls::listAttributes(int descriptor, char* names, size_t size)
{
    return make("flistxattr", [&] { return ::flistxattr(descriptor, names, size); });
}

ssize_t FileSystemCalls::attribute(int descriptor, const char* name, void* value, size_t size)
{
    return make("fgetxattr", [&] { return ::fgetxattr(descriptor, name, value, size); });
}

int FileSystemCalls::setAttribute(int descriptor, const char* name, const void* value, size_t size)
{
    return make("fsetxattr", [&] { return ::fsetxattr(descriptor, name, value, size, 0); });
}

int FileSystemCalls::removeAttribute(int descriptor, const char* name)
{
    return make("fremovexattr", [&] { return ::fremovexattr(descriptor, name); });
}

int FileSystemCalls::changeOwner(int descriptor, uid_t owner, gid_t group)
{
    return make("fchown", [&] { return ::fchown(descriptor, owner, group); });
}

int FileSystemCalls::changeMode(int descriptor, mode_t mode)
{
    return make("fchmod", [&] { return ::fchmod(descriptor, mode); });
}

int FileSystemCalls::setTimes(int descriptor, const struct timespec (&times)[2])
{
    return make("futimens", [&] { return ::futimens(descriptor, times); });
}

} // namespace wendlore
