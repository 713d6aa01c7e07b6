#pragma once

#include "State/FolderBookmarks.h"

namespace wendlore {

/// Bookmarks that hold a folder's path and what it is to the file system. A folder that was renamed or moved
/// is found again when it lies near its old place on the same file system; a search that grows long is given
/// up.
class PathBookmarks final : public FolderBookmarks
{
public:
    /// Folders that one search may list before it gives up.
    static constexpr int searchLimit = 2000;

    [[nodiscard]] std::optional<QByteArray> create(const FileURL& folder) override;
    /// Whatever folder lies at the bookmark's path counts as the one that was meant: a synchronisation that
    /// makes it anew keeps it a bucket. Only when there is none is the folder looked for elsewhere.
    [[nodiscard]] std::optional<FileURL> resolve(const QByteArray& bookmark) override;
};

} // namespace wendlore
