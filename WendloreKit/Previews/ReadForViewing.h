#pragma once

#include "Vault/FileURL.h"

#include <QByteArray>

#include <optional>

namespace wendlore {

class FileCoordinator;

/// What a viewer shows of `file`: a file that a cloud program has yet to bring is asked for first, and one
/// that is being written is waited for. Nothing when it cannot be read or is larger than `limit` bytes.
/// Blocks until the bytes are there: to be called in the background.
[[nodiscard]] std::optional<QByteArray> readForViewing(FileCoordinator& coordinator, const FileURL& file,
                                                       qint64 limit);

} // namespace wendlore
