#pragma once

#include "Vault/FileCoordinator.h"
#include "Vault/FileSystemCalls.h"

namespace wendlore {

/// Reads files that a synchronisation program may be writing at the same moment.
class CoordinatedReader final : public FileCoordinator
{
public:
    explicit CoordinatedReader(FileSystemCalls& calls = FileSystemCalls::real());

    /// Cloud folders bring a file to this disk when it is read: for one whose bytes are not here yet, a first
    /// byte is read on a background thread.
    void startDownloading(const FileURL& url) override;
    /// Gives up, with a log line, on a file that does not come to rest within about a second.
    [[nodiscard]] std::optional<QByteArray> readWhole(const FileURL& url) override;
    void visitEverythingBelow(const FileURL& folder) override;

private:
    enum class Reading { Whole, Moving, Impossible };

    [[nodiscard]] Reading readOnce(const FileURL& url, QByteArray& bytes);

    FileSystemCalls& m_calls;
};

} // namespace wendlore
