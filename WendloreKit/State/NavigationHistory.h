#pragma once

#include "Vault/FileURL.h"

#include <functional>
#include <optional>
#include <vector>

namespace wendlore {

/// The files that were shown, oldest first, and where the user stands among them. Always -1 <= index < count.
class NavigationHistory final
{
public:
    /// Tells whether a file still exists at a location.
    using Exists = std::function<bool(const FileURL&)>;

    [[nodiscard]] const std::vector<FileURL>& entries() const { return m_entries; }
    /// Index of the current entry; -1 while there is none.
    [[nodiscard]] int index() const { return m_index; }
    [[nodiscard]] bool canGoBack() const { return m_index >= 1; }
    [[nodiscard]] bool canGoForward() const { return m_index >= 0 && m_index < count() - 1; }

    /// Records that `current` is shown after `previous`; a cleared or unchanged selection is not recorded,
    /// the forward part is discarded, and an immediate repeat of the last entry is suppressed. Tells whether
    /// anything was recorded.
    bool record(const std::optional<FileURL>& previous, const std::optional<FileURL>& current);
    /// Steps back to the nearest entry that still exists, removing vanished ones on the way. Gives the entry
    /// to show, or nothing when none is left in that direction.
    [[nodiscard]] std::optional<FileURL> back(const Exists& exists);
    /// Steps forward in the same way.
    [[nodiscard]] std::optional<FileURL> forward(const Exists& exists);

private:
    enum class Step { back, forward };

    [[nodiscard]] int count() const { return static_cast<int>(m_entries.size()); }
    [[nodiscard]] std::optional<FileURL> apply(Step step, const Exists& exists);

    std::vector<FileURL> m_entries;
    int m_index = -1;
};

} // namespace wendlore
