#pragma once

#include "Vault/FileURL.h"

#include <QStringList>

namespace wendlore {

/// The names, without their endings, of all notes below `root`, each once and in the order of the sidebar.
/// Reads the disk; may be called from any thread.
[[nodiscard]] QStringList namesOfNotes(const FileURL& root);

} // namespace wendlore
