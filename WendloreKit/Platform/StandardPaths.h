#pragma once

#include "Vault/FileURL.h"

namespace wendlore {

/// The program's own folders, where the user's environment wants them. They need not exist.
namespace StandardPaths {

/// Settings.
[[nodiscard]] FileURL configDirectory();
/// What belongs to the user but is no document: the list of buckets that devices share.
[[nodiscard]] FileURL dataDirectory();
/// What must not be lost but is no document: recovered texts, backups of writes that are under way.
[[nodiscard]] FileURL stateDirectory();
/// What can be made again.
[[nodiscard]] FileURL cacheDirectory();

} // namespace StandardPaths

} // namespace wendlore
