#pragma once

#include "Decoder/QuickLookFile.h"
#include "Decoder/QuickLookLimits.h"
#include "Decoder/QuickLookPage.h"

#include <optional>

namespace wendlore {

/// What a file says, as a page, by its extension and by what it holds: text, tables, books, mail, archives,
/// and what the web engine plays and draws. Nothing for other files.
[[nodiscard]] std::optional<QuickLookPage> readFilePreview(const QuickLookFile& file,
                                                           const QuickLookLimits& limits);

/// The text of a document of an office program, or the picture of its first page that it brings along;
/// nothing when it has neither.
[[nodiscard]] std::optional<QuickLookPage> readDocumentPreview(const QuickLookFile& file,
                                                               const QuickLookLimits& limits);

/// The PDF file of its pages that a document brings along; empty when there is none.
[[nodiscard]] QByteArray readDocumentPages(const QuickLookFile& file, const QuickLookLimits& limits);

} // namespace wendlore
