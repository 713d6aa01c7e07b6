#pragma once

#include "Decoder/QuickLookFile.h"
#include "Decoder/QuickLookLimits.h"
#include "Decoder/QuickLookPage.h"

#include <optional>

namespace wendlore {

/// An EPUB file as a page: its cover, title and author, a table of contents, and the text. Nothing when the
/// file is no book.
[[nodiscard]] std::optional<QuickLookPage> bookPage(const QuickLookFile& file, const QuickLookLimits& limits);

} // namespace wendlore
