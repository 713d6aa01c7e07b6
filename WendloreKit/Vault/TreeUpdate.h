#pragma once

#include "Vault/FileNode.h"

#include <vector>

namespace wendlore {

/// Makes `tree`, which was read from `bucket`, tell what `folder` (the bucket or a folder below it) holds
/// now, by listing that folder alone: folders that were in it keep their contents, new ones are read whole. A
/// folder that the tree does not have yet is looked for in the nearest one above. Tells whether the tree
/// changed.
bool updateFolder(std::vector<FileNode>& tree, const FileURL& bucket, const FileURL& folder);

/// The same for both ends of a move that brought `from` to `to`. A folder takes along what the tree knows of
/// its contents.
bool updateMoved(std::vector<FileNode>& tree, const FileURL& bucket, const FileURL& from, const FileURL& to);

} // namespace wendlore
