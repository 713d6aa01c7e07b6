#pragma once

#include "Vault/FileURL.h"

#include <optional>

namespace wendlore {

/// What a folder is to the file system, whatever its name. `born` tells a folder from a later one that was
/// given the same inode; it is 0 where the file system does not keep it.
struct FolderIdentity final
{
    qint64 device = 0;
    qint64 inode = 0;
    qint64 born = 0; ///< in nanoseconds

    friend bool operator==(const FolderIdentity&, const FolderIdentity&) = default;
};

/// The identity of the folder at a location, symbolic links followed; nothing when there is no folder.
[[nodiscard]] std::optional<FolderIdentity> folderIdentity(const FileURL& folder);

} // namespace wendlore
