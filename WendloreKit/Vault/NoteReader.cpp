#include "Vault/NoteReader.h"

#include "Vault/ByteScanner.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace wendlore {

namespace {

constexpr std::size_t usualCapacity = 256 * 1024;
constexpr std::size_t keptCapacity = 4 * 1024 * 1024;
/// Few enough to stay far from the limit of open files, many enough to keep a disk busy.
constexpr int batchSize = 64;

/// Every size of a page is a multiple of this.
constexpr std::size_t smallestPage = 4096;

/// True on the usual file systems of a disk: there a read stops inside a page only where the file ends, and
/// need not be followed by another that finds nothing. Others may stop anywhere.
bool givesWholePages(int folder)
{
    constexpr auto usual = std::to_array<long>(
        {EXT4_SUPER_MAGIC, BTRFS_SUPER_MAGIC, XFS_SUPER_MAGIC, F2FS_SUPER_MAGIC, TMPFS_MAGIC});
    struct statfs status;
    return ::fstatfs(folder, &status) == 0 && std::ranges::find(usual, status.f_type) != usual.end();
}

bool isRegular(int descriptor)
{
    struct stat status;
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

/// Reads at `offset`; without patience only what needs no wait for the disk (EAGAIN when that is nothing).
ssize_t readAt(int descriptor, char* target, std::size_t size, std::size_t offset, int flags)
{
    for (;;) {
        const iovec part{target, size};
        const ssize_t taken = ::preadv2(descriptor, &part, 1, static_cast<off_t>(offset), flags);
        if (taken >= 0 || errno != EINTR)
            return taken;
    }
}

/// Closes files many at a time, which costs the system less than one by one.
class FilesToClose final
{
public:
    FilesToClose() = default;
    ~FilesToClose() { closeAll(); }
    FilesToClose(const FilesToClose&) = delete;
    FilesToClose& operator=(const FilesToClose&) = delete;

    void add(int descriptor)
    {
        if (descriptor != m_first + m_count || m_count == batchSize)
            closeAll();
        if (m_count == 0)
            m_first = descriptor;
        ++m_count;
    }

private:
    /// Numbers that follow each other, and all of them open: no other thread's file is among them.
    void closeAll()
    {
        const int end = m_first + m_count;
        if (m_count > 0 && ::close_range(unsigned(m_first), unsigned(end - 1), 0) != 0) {
            for (int descriptor = m_first; descriptor < end; ++descriptor)
                ::close(descriptor);
        }
        m_count = 0;
    }

    int m_first = 0;
    int m_count = 0;
};

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

int NoteReader::openFile(int folder, const FolderListing::Entry& file)
{
    // Never waits for anything that is no file, even if it has taken the file's place since the listing.
    constexpr int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    int descriptor = ::openat(folder, file.name.data(), flags | m_traceless);
    if (descriptor < 0 && errno == EPERM && m_traceless != 0) {
        m_traceless = 0;
        descriptor = ::openat(folder, file.name.data(), flags);
    }
    if (descriptor < 0 || file.isRegularFile || isRegular(descriptor))
        return descriptor;
    ::close(descriptor);
    return -1;
}

/// False when reading has to wait for the disk and there is no patience for that.
bool NoteReader::readOne(int descriptor, std::size_t index, Patience patience, const Receive& receive)
{
    const int flags = patience == Patience::none ? RWF_NOWAIT : 0;
    std::size_t size = 0;
    for (;;) {
        if (size == m_capacity) {
            if (size == usualCapacity && !isRegular(descriptor))
                return true; // a device that was put in the file's place need not end
            grow(m_capacity * 2, size);
        }
        const ssize_t taken = readAt(descriptor, m_buffer.get() + size, m_capacity - size, size, flags);
        if (taken < 0)
            return patience == Patience::full;
        if (taken == 0)
            break;
        const bool isFull = static_cast<std::size_t>(taken) == m_capacity - size;
        size += static_cast<std::size_t>(taken);
        if (m_endsInsidePage && !isFull && size % smallestPage != 0)
            break;
    }
    std::memset(m_buffer.get() + size, 0, ByteScanner::padding);
    receive(index, {m_buffer.get(), size});
    return true;
}

void NoteReader::read(int folder, std::span<const FolderListing::Entry> files, const Receive& receive)
{
    struct Waiting final
    {
        int descriptor;
        std::size_t index;
    };
    m_endsInsidePage = !files.empty() && givesWholePages(folder);
    m_traceless = O_NOATIME;
    std::array<Waiting, batchSize> waiting;
    FilesToClose toClose;
    for (std::size_t start = 0; start < files.size(); start += batchSize) {
        std::size_t count = 0;
        for (std::size_t i = start; i < std::min(start + batchSize, files.size()); ++i) {
            const int descriptor = openFile(folder, files[i]);
            if (descriptor < 0)
                continue;
            if (readOne(descriptor, i, Patience::none, receive)) {
                toClose.add(descriptor);
            } else {
                ::posix_fadvise(descriptor, 0, 0, POSIX_FADV_WILLNEED);
                waiting[count++] = {descriptor, i};
            }
        }
        for (const Waiting& file : std::span(waiting).first(count)) {
            (void)readOne(file.descriptor, file.index, Patience::full, receive);
            toClose.add(file.descriptor);
        }
    }
}

} // namespace wendlore
