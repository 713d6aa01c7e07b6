#pragma once

#include "Vault/FileURL.h"

#include <QByteArray>

#include <functional>
#include <optional>

namespace wendlore {

/// Previews that took long to make, on disk and for the user alone: one file for each previewed file as it
/// was then. What has not been used for longest goes when there is too much.
class QuickLookCache final
{
public:
    static constexpr qint64 defaultMaximumSize = 200'000'000;

    explicit QuickLookCache(FileURL folder = standardFolder(), qint64 maximumSize = defaultMaximumSize);

    /// The folder of previews among what the desktop caches.
    [[nodiscard]] static FileURL standardFolder();

    /// The file that holds, or would hold, the preview of `file` as it is now, by its path, size and time. An
    /// empty location when the file cannot be read.
    [[nodiscard]] FileURL placeOf(const FileURL& file, const QString& extension) const;
    /// Whether there is a preview at `place`; it counts as used now.
    [[nodiscard]] bool has(const FileURL& place) const;
    /// Keeps the preview, and drops the oldest others when there are too many; false when it cannot be kept.
    [[nodiscard]] bool keep(const FileURL& place, const QByteArray& bytes) const;

private:
    void dropOldest(const FileURL& kept) const;

    FileURL m_folder;
    qint64 m_maximumSize;
};

} // namespace wendlore
