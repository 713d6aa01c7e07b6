#pragma once

#include "Vault/FileURL.h"

namespace wendlore {

/// What lies at a location.
enum class DiskEntry {
    Missing, ///< nothing, or nothing that this user may see
    Folder,
    File ///< anything that is no directory
};

/// Looks at the disk; follows symbolic links, so a dangling one counts as missing.
[[nodiscard]] DiskEntry diskEntry(const FileURL& url);
/// True when anything is there.
[[nodiscard]] bool existsOnDisk(const FileURL& url);

} // namespace wendlore
