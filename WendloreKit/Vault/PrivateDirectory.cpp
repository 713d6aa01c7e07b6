#include "Vault/PrivateDirectory.h"

#include <cerrno>

#include <sys/stat.h>

namespace wendlore {

bool makePrivateDirectory(const FileURL& directory)
{
    if (::mkdir(directory.bytes().constData(), 0700) == 0)
        return true;
    if (errno == ENOENT && directory.bytes() != "/" &&
        makePrivateDirectory(directory.deletingLastPathComponent()))
        return ::mkdir(directory.bytes().constData(), 0700) == 0 || errno == EEXIST;
    struct stat status = {};
    return errno == EEXIST && ::stat(directory.bytes().constData(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace wendlore
