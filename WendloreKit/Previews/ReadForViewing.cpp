#include "Previews/ReadForViewing.h"

#include "Previews/FileStatus.h"

#include "Vault/FileCoordinator.h"

namespace wendlore {

std::optional<QByteArray> readForViewing(FileCoordinator& coordinator, const FileURL& file, qint64 limit)
{
    coordinator.startDownloading(file);
    if (const auto status = statusOf(file); status && status->st_size > limit)
        return std::nullopt;
    return coordinator.readWhole(file);
}

} // namespace wendlore
