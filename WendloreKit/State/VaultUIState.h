#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

#include <optional>

namespace wendlore {

/// What one bucket remembers between runs. An absent value is not written.
struct VaultUIState final
{
    std::optional<QString> selectedFilePath;
    std::optional<QString> selectedFolderPath;
    std::optional<double> sidebarWidth; ///< in device-independent pixels

    friend bool operator==(const VaultUIState&, const VaultUIState&) = default;
};

/// UI memory by bucket root path.
using VaultUIStates = QMap<QString, VaultUIState>;

/// Reads a stored map; anything that does not decode gives an empty map.
[[nodiscard]] VaultUIStates vaultUIStatesFromJson(const QByteArray& json);
[[nodiscard]] QByteArray toJson(const VaultUIStates& states);

} // namespace wendlore
