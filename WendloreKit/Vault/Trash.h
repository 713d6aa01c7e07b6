#pragma once

#include "Vault/FileURL.h"

namespace wendlore {

/// The desktop's trash.
class Trash
{
public:
    virtual ~Trash() = default;

    /// Puts a file or folder into the trash, from where the user can bring it back; false when it stays where
    /// it is.
    [[nodiscard]] virtual bool put(const FileURL& item) = 0;
};

} // namespace wendlore
