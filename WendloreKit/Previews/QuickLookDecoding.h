#pragma once

#include "Decoder/QuickLookLimits.h"
#include "Decoder/QuickLookPage.h"

#include <optional>

namespace wendlore {

/// The page that a process of its own makes of a file; nothing when it can make none, dies over it, or takes
/// too long. Blocks.
[[nodiscard]] std::optional<QuickLookPage> decodeFilePreview(const FileURL& file,
                                                             const QuickLookLimits& limits);

/// The same of a document of an office program: its text, or the picture of its first page.
[[nodiscard]] std::optional<QuickLookPage> decodeDocumentPreview(const FileURL& file,
                                                                 const QuickLookLimits& limits);

/// The PDF file that a document brings along; empty in the same cases. Blocks.
[[nodiscard]] QByteArray decodeDocumentPages(const FileURL& file, const QuickLookLimits& limits);

} // namespace wendlore
