#include "Previews/ReadForViewing.h"

#include "Vault/FileCoordinator.h"

#include <sys/stat.h>

namespace wendlore {

std::optional<QByteArray> readForViewing(FileCoordinator& coordinator, const FileURL& file, qint64 limit)
{
    coordinator.startDownloading(file);
    struct stat status = {};
    if (::stat(file.bytes().constData(), &status) == 0 && status.st_size > limit)
        return std::nullopt;
    return coordinator.readWhole(file);
}

} // namespace wendlore
