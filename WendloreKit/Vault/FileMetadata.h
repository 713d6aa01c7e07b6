#pragma once

#include "Vault/FileSystemCalls.h"

namespace wendlore {

/// Gives the new file `to` what belongs to the file `from` besides its bytes: owner, group, mode, the user's
/// extended attributes and the access list. `status` describes `from`. False when any of it cannot be kept.
[[nodiscard]] bool copyMetadata(FileSystemCalls& calls, int from, const struct stat& status, int to);

} // namespace wendlore
