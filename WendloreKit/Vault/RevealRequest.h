#pragma once

#include "Vault/FileURL.h"

namespace wendlore {

/// Asks to show a file in the sidebar. `token` changes with every request, so that the same file can be asked
/// for twice.
struct RevealRequest final
{
    FileURL url;
    int token = 0;

    friend bool operator==(const RevealRequest&, const RevealRequest&) = default;
};

} // namespace wendlore
