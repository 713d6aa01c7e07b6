#pragma once

#include "Vault/FileSystemCalls.h"
#include "Vault/FileURL.h"

namespace wendlore {

/// Moves the file or folder `from` to the location `to`, and never onto anything: 0, or an error number,
/// which is `EEXIST` when something lies at `to`, also when it appeared this very moment. Between file
/// systems the copy is complete and on the disk before the original goes.
[[nodiscard]] int moveExclusively(const FileURL& from, const FileURL& to,
                                  FileSystemCalls& calls = FileSystemCalls::real());

} // namespace wendlore
