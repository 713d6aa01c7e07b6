#include "Vault/FolderListing.h"

#include <algorithm>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace wendlore {

namespace {

constexpr std::size_t batchSize = 64 * 1024;

bool isDirectory(int folder, const dirent64& entry)
{
    if (entry.d_type != DT_UNKNOWN)
        return entry.d_type == DT_DIR;
    struct stat status;
    return ::fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

std::vector<FolderEntry> visibleEntries(const FileURL& folder, FollowLink followLink)
{
    std::vector<FolderEntry> entries;
    const int noFollow = followLink == FollowLink::No ? O_NOFOLLOW : 0;
    const int descriptor =
        ::open(folder.bytes().constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK | noFollow);
    if (descriptor < 0)
        return entries;

    alignas(dirent64) thread_local char batch[batchSize];
    for (;;) {
        const ssize_t size = ::getdents64(descriptor, batch, sizeof batch);
        if (size <= 0)
            break;
        for (ssize_t offset = 0; offset < size;) {
            const auto& entry = *reinterpret_cast<const dirent64*>(batch + offset);
            if (entry.d_name[0] != '.')
                entries.push_back({entry.d_name, isDirectory(descriptor, entry), entry.d_ino});
            offset += entry.d_reclen;
        }
    }
    ::close(descriptor);
    std::ranges::sort(entries, {}, &FolderEntry::name);
    return entries;
}

} // namespace wendlore
