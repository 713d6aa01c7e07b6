#include "Vault/FolderListing.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace wendlore {

namespace {

/// Few folders need more.
constexpr std::size_t usualCapacity = 32 * 1024;
/// With less room than this the kernel is not asked for more.
constexpr std::size_t smallestBatch = 4 * 1024;

const dirent64& entryAt(const char* batch, std::size_t offset)
{
    return *reinterpret_cast<const dirent64*>(batch + offset);
}

/// True when the last entry of a batch says that the next one would stand at the end of all places: then
/// there is none, and the file system need not be asked again.
bool endsFolder(const char* batch, std::size_t size)
{
    std::size_t last = 0;
    for (std::size_t next = 0; next < size; next += entryAt(batch, next).d_reclen)
        last = next;
    return entryAt(batch, last).d_off == std::numeric_limits<off64_t>::max();
}

/// The entry's type, as `d_type` tells it or, where the file system does not, as the file itself does.
unsigned char typeOf(int folder, const dirent64& entry)
{
    if (entry.d_type != DT_UNKNOWN)
        return entry.d_type;
    struct stat status;
    return ::fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0
               ? static_cast<unsigned char>(IFTODT(status.st_mode))
               : static_cast<unsigned char>(DT_UNKNOWN);
}

int openFolder(const FolderPlace& place)
{
    constexpr int flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK;
    const int noFollow = place.followLink == FollowLink::No ? O_NOFOLLOW : 0;
    if (place.ancestor < 0)
        return ::open(place.url.bytes().constData(), flags | noFollow);
    std::string path(place.url.folder().substr(place.ancestorSize));
    path += place.url.name();
    return ::openat(place.ancestor, path.c_str(), flags | noFollow);
}

} // namespace

thread_local FolderListing::Memory FolderListing::s_spare;

FolderListing::FolderListing(const FolderPlace& place)
    : m_descriptor(openFolder(place))
    , m_memory(std::exchange(s_spare, {}))
{
    m_memory.entries.clear();
    if (m_descriptor >= 0)
        addEntries(readBatches());
}

FolderListing::~FolderListing()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    if (m_memory.capacity == usualCapacity)
        s_spare = std::move(m_memory);
}

std::size_t FolderListing::readBatches()
{
    std::size_t size = 0;
    for (;;) {
        if (m_memory.capacity - size < smallestBatch)
            grow(size);
        char* const batch = m_memory.batches.get() + size;
        const ssize_t taken = ::getdents64(m_descriptor, batch, m_memory.capacity - size);
        if (taken <= 0)
            return size;
        size += static_cast<std::size_t>(taken);
        if (endsFolder(batch, static_cast<std::size_t>(taken)))
            return size;
    }
}

void FolderListing::grow(std::size_t kept)
{
    const std::size_t capacity = std::max(usualCapacity, m_memory.capacity * 2);
    std::unique_ptr<char[]> larger(new char[capacity + padding]);
    std::copy_n(m_memory.batches.get(), kept, larger.get());
    m_memory.batches = std::move(larger);
    m_memory.capacity = capacity;
}

void FolderListing::addEntries(std::size_t size)
{
    for (std::size_t offset = 0; offset < size;) {
        const dirent64& entry = entryAt(m_memory.batches.get(), offset);
        offset += entry.d_reclen;
        if (entry.d_name[0] == '.')
            continue;
        const unsigned char type = typeOf(m_descriptor, entry);
        m_memory.entries.push_back({entry.d_name, type == DT_DIR, type == DT_REG, entry.d_ino});
    }
}

std::vector<FolderEntry> visibleEntries(const FileURL& folder, FollowLink followLink)
{
    const FolderListing listing(folder, followLink);
    std::vector<FolderEntry> entries;
    entries.reserve(listing.entries().size());
    for (const auto& [name, isDirectory, isRegularFile, inode] : listing.entries())
        entries.push_back({QByteArray(name.data(), qsizetype(name.size())), isDirectory, inode});
    std::ranges::sort(entries, {}, &FolderEntry::name);
    return entries;
}

} // namespace wendlore
