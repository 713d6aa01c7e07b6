#pragma once

#include <QtGlobal>

#include <cerrno>
#include <cstddef>
#include <utility>

#include <sys/stat.h>
#include <sys/types.h>

namespace wendlore {

/// The system calls of file writing and moving, as the kernel has them: -1 and `errno` on failure, but never
/// `EINTR`. Tests stand in between and refuse a call, cut a write short or end the process.
class FileSystemCalls
{
public:
    FileSystemCalls() = default;
    virtual ~FileSystemCalls() = default;
    Q_DISABLE_COPY_MOVE(FileSystemCalls)

    /// The calls with nothing in between.
    [[nodiscard]] static FileSystemCalls& real();

    int openAt(int directory, const char* name, int flags, mode_t mode = 0);
    /// The descriptor is closed in any case; -1 means that the last bytes may not have reached the file.
    int close(int descriptor);
    /// Describes the entry itself, also when it is a symbolic link.
    int statusAt(int directory, const char* name, struct stat* status);
    int status(int descriptor, struct stat* status);
    ssize_t readLink(int directory, const char* name, char* target, size_t size);

    /// Reads and writes at `position`, without moving the descriptor.
    ssize_t read(int descriptor, char* bytes, size_t size, off_t position);
    ssize_t write(int descriptor, const char* bytes, size_t size, off_t position);
    int truncate(int descriptor, off_t size);
    /// Reserves the blocks of the first `size` bytes without changing the file's size.
    int reserve(int descriptor, off_t size);
    int sync(int descriptor);
    /// Makes everything of the file system that holds `descriptor` reach the disk.
    int syncFileSystem(int descriptor);
    int lock(int descriptor, int operation);

    int rename(int directory, const char* from, const char* to);
    /// Renames, and fails with `EEXIST` when `to` exists.
    int renameExclusively(int fromDirectory, const char* from, int toDirectory, const char* to);
    /// Makes each of two names in `directory` the other one's, in one step.
    int exchange(int directory, const char* one, const char* other);
    int link(int fromDirectory, const char* from, int toDirectory, const char* to);
    int makeDirectory(int directory, const char* name, mode_t mode);
    int remove(int directory, const char* name, int flags = 0);

    ssize_t listAttributes(int descriptor, char* names, size_t size);
    ssize_t attribute(int descriptor, const char* name, void* value, size_t size);
    int setAttribute(int descriptor, const char* name, const void* value, size_t size);
    int removeAttribute(int descriptor, const char* name);
    int changeOwner(int descriptor, uid_t owner, gid_t group);
    int changeMode(int descriptor, mode_t mode);
    /// Sets the times of access and change.
    int setTimes(int descriptor, const struct timespec (&times)[2]);

protected:
    /// Asked before each call. An error number makes the call fail with it, 0 lets it through.
    virtual int refusal(const char* call);
    /// How many of `size` bytes one write takes.
    virtual size_t accepted(size_t size);

private:
    template <typename Call>
    auto make(const char* name, const Call& call) -> decltype(call());
};

/// Whether `error` says that the file system does not know the call, rather than that it failed.
[[nodiscard]] constexpr bool isUnknownCall(int error)
{
    return error == EINVAL || error == ENOSYS || error == EOPNOTSUPP;
}

/// Closes its descriptor when it goes out of scope; holds none while it is -1.
class Descriptor final
{
public:
    explicit Descriptor(FileSystemCalls& calls, int value = -1)
        : m_calls(&calls)
        , m_value(value)
    {}
    ~Descriptor() { close(); }
    Descriptor(Descriptor&& other) noexcept
        : m_calls(other.m_calls)
        , m_value(std::exchange(other.m_value, -1))
    {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(m_calls, other.m_calls);
        std::swap(m_value, other.m_value);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] int get() const { return m_value; }
    [[nodiscard]] bool isOpen() const { return m_value >= 0; }
    /// Closes now; -1 and `errno` when that tells of lost bytes.
    int close() { return m_value < 0 ? 0 : m_calls->close(std::exchange(m_value, -1)); }

private:
    FileSystemCalls* m_calls;
    int m_value;
};

} // namespace wendlore
