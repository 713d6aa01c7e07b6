#include "Platform/FolderIdentity.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace wendlore {

std::optional<FolderIdentity> folderIdentity(const FileURL& folder)
{
    struct statx status;
    constexpr unsigned wanted = STATX_TYPE | STATX_INO | STATX_BTIME;
    if (::statx(AT_FDCWD, folder.bytes().constData(), 0, wanted, &status) != 0 || !S_ISDIR(status.stx_mode))
        return std::nullopt;

    FolderIdentity identity;
    identity.device = qint64(makedev(status.stx_dev_major, status.stx_dev_minor));
    identity.inode = qint64(status.stx_ino);
    if (status.stx_mask & STATX_BTIME)
        identity.born = status.stx_btime.tv_sec * 1'000'000'000 + status.stx_btime.tv_nsec;
    return identity;
}

} // namespace wendlore
