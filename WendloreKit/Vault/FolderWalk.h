#pragma once

#include "Vault/FileNode.h"
#include "Vault/FolderListing.h"

#include <functional>
#include <vector>

namespace wendlore {

/// Gives the nodes of one folder, those of its subfolders with empty children. Called by several threads.
using ListFolder = std::function<std::vector<FileNode>(const FolderPlace& folder)>;

/// Lists `root` and every folder below it, and returns when all are read. Uses a few threads for a large
/// tree. Only `root` itself may be a symbolic link.
[[nodiscard]] std::vector<FileNode> walkFolders(const FileURL& root, const ListFolder& list);

} // namespace wendlore
