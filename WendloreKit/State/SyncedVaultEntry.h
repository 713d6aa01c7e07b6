#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace wendlore {

/// A bucket in the list that the user's devices share. Devices know a bucket by its folder's name alone.
struct SyncedVaultEntry final
{
    QString id; ///< an upper-case UUID, made when the entry is
    QString name;

    friend bool operator==(const SyncedVaultEntry&, const SyncedVaultEntry&) = default;
};

/// Reads a JSON array of entries; nothing when any of it is something else.
[[nodiscard]] std::optional<std::vector<SyncedVaultEntry>> syncedVaultEntriesFromJson(const QByteArray& json);
[[nodiscard]] QByteArray toJson(const std::vector<SyncedVaultEntry>& entries);

} // namespace wendlore
