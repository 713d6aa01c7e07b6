#pragma once

#include "Decoder/QuickLookPage.h"

#include <QDateTime>
#include <QList>

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

/// The listing as a page.
[[nodiscard]] QuickLookPage listingPage(const ArchiveListing& listing);

} // namespace wendlore
