#pragma once

#include "Vault/FileURL.h"

namespace wendlore {

/// The folder of the files that are shipped with the program: the editor page and perhaps a typography
/// theme. Found once per process, in the installed resource folder, beside the library's own code, or beside
/// the program; ends the process when it is in none of them.
[[nodiscard]] const FileURL& resourceBundle();

} // namespace wendlore
