#pragma once

#include "Vault/FileURL.h"

#include <QString>

namespace wendlore {

/// One search result.
struct SearchHit final
{
    FileURL url;
    QString snippet; ///< the first line that holds the query, trimmed, at most 120 characters; empty when
                     ///< only the name does

    friend bool operator==(const SearchHit&, const SearchHit&) = default;
};

} // namespace wendlore
