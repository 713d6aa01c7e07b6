#pragma once

#include "Vault/FileNode.h"
#include "Vault/FolderListing.h"

#include <QString>

#include <optional>
#include <vector>

namespace wendlore {

class NameOrder;

/// The visible entries of `folder` alone, those of its subfolders missing: folders first, each kind in the
/// order of `order` by display name (a file's without its extension), and names that are equal there by their
/// bytes. Packages and symbolic links are files. None when the folder cannot be read.
[[nodiscard]] std::vector<FileNode> nodesOfFolder(const FolderPlace& folder, const NameOrder& order);

/// Reads the visible contents of `folder` from disk, all the way down, in that order. A folder that cannot be
/// read is empty.
[[nodiscard]] std::vector<FileNode> buildTree(const FileURL& folder, const NameOrder& order);
/// The same in the user's own language.
[[nodiscard]] std::vector<FileNode> buildTree(const FileURL& folder);

/// The location in `nodes`, or below one of them, whose path is exactly `path`.
[[nodiscard]] std::optional<FileURL> urlInTree(const QString& path, const std::vector<FileNode>& nodes);

/// Everything visible below `root`, contents of packages included, that is named as a note; a folder comes
/// before its contents, names in one folder by their bytes.
[[nodiscard]] std::vector<FileURL> allMarkdownFiles(const FileURL& root);

} // namespace wendlore
