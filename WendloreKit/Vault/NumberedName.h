#pragma once

#include "Vault/FileURL.h"

#include <QString>

namespace wendlore {

// Names that are tried one after the other, `number` rising from 1, until one is free.

/// "Ny not.md", "Ny not 2.md", "Ny not 3.md": the name of a new item, of `stem` and `ending`.
[[nodiscard]] QString newItemName(const QString& stem, const QString& ending, int number);

/// "bild.png", "bild-2.png": the name of a copy of `file`. The full stop stands without an extension too
/// ("scan", "scan-2.").
[[nodiscard]] QString assetName(const FileURL& file, int number);

} // namespace wendlore
