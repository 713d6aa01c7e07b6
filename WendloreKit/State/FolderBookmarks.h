#pragma once

#include "Vault/FileURL.h"

#include <QByteArray>

#include <optional>

namespace wendlore {

/// Lasting access to folders that the user chose: opaque data made from a folder and resolved back to it.
class FolderBookmarks
{
public:
    virtual ~FolderBookmarks() = default;

    /// Data that finds `folder` again; nothing when the folder is not there.
    [[nodiscard]] virtual std::optional<QByteArray> create(const FileURL& folder) = 0;
    /// The folder that `bookmark` stands for, also after a rename where it can be found; nothing when it is
    /// gone.
    [[nodiscard]] virtual std::optional<FileURL> resolve(const QByteArray& bookmark) = 0;
};

} // namespace wendlore
