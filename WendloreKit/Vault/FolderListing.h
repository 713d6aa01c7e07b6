#pragma once

#include "Vault/FileURL.h"

#include <vector>

namespace wendlore {

/// One visible entry of a folder.
struct FolderEntry final
{
    QByteArray name;
    bool isDirectory = false; ///< a directory itself, no link to one
    quint64 inode = 0;        ///< as the folder lists it; of a mount point it is the covered directory's
};

/// Whether a location that is a symbolic link may be listed as the folder that it leads to.
enum class FollowLink { Yes, No };

/// The entries of `folder` whose names do not begin with a full stop, in the order of their names' bytes.
/// Empty when the folder cannot be read.
[[nodiscard]] std::vector<FolderEntry> visibleEntries(const FileURL& folder, FollowLink followLink);

} // namespace wendlore
