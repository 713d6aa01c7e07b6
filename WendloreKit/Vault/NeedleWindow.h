#pragma once

#include "Vault/ByteScanner.h"
#include "Vault/CaseFolding.h"

#include <vector>

namespace wendlore {

/// The part of a query that a byte scan looks for: a few of its units (a base character with its marks),
/// in every spelling that UTF-8 text can have for them. Whoever holds the query has these bytes
/// somewhere, so no match is missed.
struct NeedleWindow final
{
    /// Empty when the query has no part with few enough spellings; then every line has to be looked at.
    std::vector<BytePattern> patterns;
    /// How many units of the query stand before the window.
    int unitsBefore = 0;

    /// The rarest window of a query's caseless form.
    [[nodiscard]] static NeedleWindow choose(const icu::UnicodeString& form, FoldingRule rule);
};

} // namespace wendlore
