#pragma once

#include "Vault/CaseFolding.h"
#include "Vault/SearchHit.h"

#include <vector>

namespace wendlore {

class NameOrder;

/// Every note below `root` whose name or text holds `query`, which is not blank, in the order of their file
/// names; equal names in the order in which the notes are listed. Reads every note from disk; text that is
/// not UTF-8 counts as empty.
[[nodiscard]] std::vector<SearchHit> searchNotes(const FileURL& root, const QString& query,
                                                 const NameOrder& order, FoldingRule rule);

} // namespace wendlore
