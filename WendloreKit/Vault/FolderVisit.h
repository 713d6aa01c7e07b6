#pragma once

#include "Vault/FileURL.h"

namespace wendlore {

/// Goes through everything below `root`, hidden items and the contents of packages included, and reads no
/// file. Symbolic links are not followed; folders that cannot be read are passed over. Gives the number of
/// items.
std::size_t visitEverything(const FileURL& root);

} // namespace wendlore
