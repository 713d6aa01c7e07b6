#include "Vault/FolderListing.h"

#include <algorithm>
#include <cstring>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace wendlore {

namespace {

/// What the kernel fills at a time; few folders need more.
constexpr std::size_t batchSize = 32 * 1024;

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

} // namespace

FolderListing::FolderListing(const FileURL& folder, FollowLink followLink)
{
    const int noFollow = followLink == FollowLink::No ? O_NOFOLLOW : 0;
    m_descriptor =
        ::open(folder.bytes().constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK | noFollow);
    if (m_descriptor < 0)
        return;
    addEntries(readBatches());
}

FolderListing::~FolderListing()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

std::size_t FolderListing::readBatches()
{
    std::size_t size = 0;
    for (;;) {
        if (m_capacity - size < batchSize) {
            const std::size_t capacity = m_capacity == 0 ? batchSize : m_capacity * 2;
            std::unique_ptr<char[]> larger(new char[capacity + padding]);
            if (size > 0)
                std::memcpy(larger.get(), m_batches.get(), size);
            m_batches = std::move(larger);
            m_capacity = capacity;
        }
        const ssize_t taken = ::getdents64(m_descriptor, m_batches.get() + size, m_capacity - size);
        if (taken <= 0)
            return size;
        size += static_cast<std::size_t>(taken);
    }
}

void FolderListing::addEntries(std::size_t size)
{
    for (std::size_t offset = 0; offset < size;) {
        const auto& entry = *reinterpret_cast<const dirent64*>(m_batches.get() + offset);
        offset += entry.d_reclen;
        if (entry.d_name[0] == '.')
            continue;
        const unsigned char type = typeOf(m_descriptor, entry);
        m_entries.push_back({entry.d_name, type == DT_DIR, type == DT_REG, entry.d_ino});
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
