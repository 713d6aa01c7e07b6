#pragma once

#include "Vault/FileURL.h"

namespace wendlore {

/// Makes the locations of what one folder holds, which share their memory.
class EntryURLs final
{
public:
    /// `size` is that of all names (and of what is kept behind them) together.
    EntryURLs(const FileURL& folder, std::size_t size);

    /// What the folder holds under `name`, which is a single name as a folder lists it; `kept` is kept in the
    /// same memory behind the name.
    [[nodiscard]] FileURL add(std::string_view name, bool isDirectory, std::string_view kept = {});

private:
    std::size_t m_room;
    std::size_t m_used = 0;
    PathMemory m_memory;
};

} // namespace wendlore
