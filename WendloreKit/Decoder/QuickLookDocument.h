#pragma once

#include "Decoder/QuickLookFile.h"
#include "Decoder/QuickLookLimits.h"
#include "Decoder/QuickLookPage.h"

#include <optional>

namespace wendlore {

/// The text of a docx or odt file as a page: headings, paragraphs and tables, without the document's own
/// look. Nothing for other files, and for a document without text.
[[nodiscard]] std::optional<QuickLookPage> documentTextPage(const QuickLookFile& file,
                                                            const QuickLookLimits& limits);

} // namespace wendlore
