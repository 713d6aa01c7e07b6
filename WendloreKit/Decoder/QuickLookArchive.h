#pragma once

#include "Decoder/QuickLookFile.h"
#include "Decoder/QuickLookLimits.h"
#include "Decoder/QuickLookListing.h"

#include <QHash>

#include <functional>
#include <optional>

namespace wendlore {

/// What is in the archive, in its order. A damaged archive gives what could be read of it; nothing when that
/// is nothing, and for what is no archive.
[[nodiscard]] std::optional<ArchiveListing>
listArchive(const QuickLookFile& file, const QuickLookLimits& limits, qsizetype maximum = shownEntries);

/// The contents of the entries that `isWanted` by their path, at most `maximumSize` bytes of them together.
/// Of an entry that does not fit, or is damaged, there is nothing.
[[nodiscard]] QHash<QString, QByteArray> readArchive(const QuickLookFile& file,
                                                     const std::function<bool(const QString&)>& isWanted,
                                                     qint64 maximumSize, const QuickLookLimits& limits);

} // namespace wendlore
