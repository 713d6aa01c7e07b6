#pragma once

#include "Vault/FileURL.h"

#include <QUrl>

#include <optional>

namespace wendlore {

/// `file` as an address for other programs; names that are not UTF-8 keep their bytes.
[[nodiscard]] QUrl fileAddress(const FileURL& file);
/// The file of a "file:" address on this computer, as a directory where the disk has one there; nothing for
/// any other address.
[[nodiscard]] std::optional<FileURL> fileAt(const QUrl& address);

} // namespace wendlore
