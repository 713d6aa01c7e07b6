#include "Vault/DiskEntry.h"

#include <sys/stat.h>

namespace wendlore {

DiskEntry diskEntry(const FileURL& url)
{
    struct stat status;
    if (url.bytes().contains('\0') || ::stat(url.bytes().constData(), &status) != 0)
        return DiskEntry::Missing;
    return S_ISDIR(status.st_mode) ? DiskEntry::Folder : DiskEntry::File;
}

bool existsOnDisk(const FileURL& url)
{
    return diskEntry(url) != DiskEntry::Missing;
}

} // namespace wendlore
