#pragma once

#include "Vault/FileURL.h"

#include <QByteArray>
#include <QUrl>

#include <optional>

namespace wendlore {

/// The file behind an address of the editor page: paths below "/assets/" lie in the bucket, all others in the
/// page's own folder; no path means the page itself. Nothing when that folder is missing, or when no file can
/// have such a path. The path is taken as it stands.
[[nodiscard]] std::optional<FileURL> vaultFile(const QUrl& address, const std::optional<FileURL>& bucket,
                                               const std::optional<FileURL>& page);

/// True for an address that names a file of the bucket, rather than of the page.
[[nodiscard]] bool isAssetAddress(const QUrl& address);

/// The content type of files with this extension.
[[nodiscard]] QByteArray mimeType(const QString& extension);

} // namespace wendlore
