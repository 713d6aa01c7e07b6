#pragma once

#include "Vault/FileURL.h"

namespace wendlore {

/// Makes `directory`, which only its owner may enter, and what is missing above it. True when it is there in
/// the end; else `errno` says why.
[[nodiscard]] bool makePrivateDirectory(const FileURL& directory);

} // namespace wendlore
