#pragma once

#include "Vault/FileSystemCalls.h"
#include "Vault/FileURL.h"

namespace wendlore {

/// Copies the file or folder `from` to the location `to`, and never onto anything: 0, or an error number,
/// which is `EEXIST` when something lies at `to`. The copy gets its name when it is complete and on the disk;
/// it keeps mode, times and the user's attributes. A copy of a symbolic link is a link.
[[nodiscard]] int copyExclusively(const FileURL& from, const FileURL& to,
                                  FileSystemCalls& calls = FileSystemCalls::real());

} // namespace wendlore
