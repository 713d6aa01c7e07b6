#pragma once

#include "Vault/FileURL.h"

#include <QByteArray>

#include <optional>

namespace wendlore {

/// Reads files as other programs write them: asks a cloud service to bring a placeholder to this disk, and
/// never hands out a torn read. Safe to call from any thread.
class FileCoordinator
{
public:
    virtual ~FileCoordinator() = default;

    /// Asks the cloud service that owns `url` to download it; does nothing for an ordinary file, ignores
    /// errors.
    virtual void startDownloading(const FileURL& url) = 0;
    /// The whole file, read again while its size or time moved during the read; nothing when it cannot be
    /// read.
    [[nodiscard]] virtual std::optional<QByteArray> readWhole(const FileURL& url) = 0;
    /// Goes through everything below `folder` without reading a file, which makes the cloud service that owns
    /// it bring it up to date.
    virtual void visitEverythingBelow(const FileURL& folder) = 0;
};

} // namespace wendlore
