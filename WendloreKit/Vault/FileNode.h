#pragma once

#include "Vault/FileURL.h"

#include <optional>
#include <vector>

namespace wendlore {

/// One entry of a bucket's tree. `children` is absent for files and holds the sorted contents of a folder.
struct FileNode final
{
    FileURL url;
    bool isDirectory = false;
    std::optional<std::vector<FileNode>> children;

    friend bool operator==(const FileNode&, const FileNode&) = default;
};

} // namespace wendlore
