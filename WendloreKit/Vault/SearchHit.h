#pragma once

#include "Vault/FileURL.h"

#include <QByteArray>

namespace wendlore {

/// One search result.
struct SearchHit final
{
    FileURL url;
    QByteArray snippet; ///< the first line that holds the query, trimmed, at most 120 characters of UTF-8;
                        ///< empty when only the name does

    friend bool operator==(const SearchHit&, const SearchHit&) = default;
};

} // namespace wendlore
