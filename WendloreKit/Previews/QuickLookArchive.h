#pragma once

#include "Previews/QuickLookLimits.h"
#include "Previews/QuickLookPage.h"

#include <QDateTime>
#include <QList>

#include <functional>
#include <optional>

namespace wendlore {

/// One file or folder in an archive.
struct ArchiveEntry final
{
    QString path;
    /// In bytes; unknown in some formats.
    std::optional<qint64> size;
    QDateTime modified;
    bool isFolder = false;
};

/// What an archive holds, or the beginning of it.
struct ArchiveListing final
{
    QList<ArchiveEntry> entries;
    bool isWhole = true;
};

/// The largest number of entries that is listed.
inline constexpr qsizetype shownEntries = 5000;

/// What is in the archive, in its order. A damaged archive gives what could be read of it; nothing when that
/// is nothing, and for what is no archive.
[[nodiscard]] std::optional<ArchiveListing> listArchive(const FileURL& file, const QuickLookLimits& limits,
                                                        qsizetype maximum = shownEntries);

/// The contents of the entries that `isWanted` by their path, at most `maximumSize` bytes of them together.
/// Of an entry that does not fit, or is damaged, there is nothing.
[[nodiscard]] QHash<QString, QByteArray> readArchive(const FileURL& file,
                                                     const std::function<bool(const QString&)>& isWanted,
                                                     qint64 maximumSize, const QuickLookLimits& limits);

/// The listing as a page.
[[nodiscard]] QuickLookPage listingPage(const ArchiveListing& listing);

} // namespace wendlore
