#include "Vault/NoteReader.h"

#include "Vault/ByteScanner.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace wendlore {

namespace {

constexpr std::size_t usualCapacity = 256 * 1024;
constexpr std::size_t keptCapacity = 4 * 1024 * 1024;
/// Few enough to stay far from the limit of open files, many enough to keep a disk busy.
constexpr std::size_t batchSize = 64;

/// Opens a regular file, never waiting for anything else that bears its name; -1 when it cannot be read.
int openRegular(int folder, const char* name)
{
    const int descriptor = ::openat(folder, name, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0)
        return -1;
    struct stat status;
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode))
        return descriptor;
    ::close(descriptor);
    return -1;
}

} // namespace

NoteReader::NoteReader()
{
    grow(usualCapacity, 0);
}

void NoteReader::grow(std::size_t capacity, std::size_t kept)
{
    std::unique_ptr<char[]> larger(new char[capacity + ByteScanner::padding]);
    std::copy_n(m_buffer.get(), kept, larger.get());
    m_buffer = std::move(larger);
    m_capacity = capacity;
}

void NoteReader::shrink()
{
    if (m_capacity > keptCapacity)
        grow(usualCapacity, 0);
}

void NoteReader::readOne(int descriptor, std::size_t index, const Receive& receive)
{
    std::size_t size = 0;
    for (;;) {
        if (size == m_capacity)
            grow(m_capacity * 2, size);
        const ssize_t taken = ::read(descriptor, m_buffer.get() + size, m_capacity - size);
        if (taken < 0 && errno == EINTR)
            continue;
        if (taken < 0)
            return;
        if (taken == 0)
            break;
        size += static_cast<std::size_t>(taken);
    }
    std::memset(m_buffer.get() + size, 0, ByteScanner::padding);
    receive(index, {m_buffer.get(), size});
}

void NoteReader::read(const FileURL& folder, std::span<const QByteArray> names, const Receive& receive)
{
    if (names.empty())
        return;
    const int directory = ::open(folder.bytes().constData(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    if (directory < 0)
        return;
    for (std::size_t start = 0; start < names.size(); start += batchSize) {
        const std::size_t count = std::min(batchSize, names.size() - start);
        std::array<int, batchSize> descriptors;
        for (std::size_t i = 0; i < count; ++i) {
            descriptors[i] = openRegular(directory, names[start + i].constData());
            if (descriptors[i] >= 0 && count > 1)
                ::posix_fadvise(descriptors[i], 0, 0, POSIX_FADV_WILLNEED);
        }
        for (std::size_t i = 0; i < count; ++i) {
            if (descriptors[i] < 0)
                continue;
            readOne(descriptors[i], start + i, receive);
            ::close(descriptors[i]);
        }
    }
    ::close(directory);
}

} // namespace wendlore
