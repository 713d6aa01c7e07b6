#pragma once

#include "Previews/QuickLookCache.h"
#include "Previews/QuickLookLimits.h"
#include "Previews/QuickLookPage.h"

#include <optional>

namespace wendlore {

/// The picture of its first page that a document, or a package that is a directory, brings along. Nothing
/// when there is none.
[[nodiscard]] std::optional<QuickLookPage> embeddedPreview(const FileURL& file,
                                                           const QuickLookLimits& limits);

/// The pages that a document, or a package that is a directory, brings along as they are printed. Nothing
/// when there are none.
[[nodiscard]] std::optional<QuickLookPdf> embeddedPages(const FileURL& file, const QuickLookLimits& limits,
                                                        const QuickLookCache& cache = QuickLookCache());

/// What is in a package that is a directory, as a list; nothing when that is nothing.
[[nodiscard]] std::optional<QuickLookPage> packagePage(const FileURL& package, const QuickLookLimits& limits);

} // namespace wendlore
