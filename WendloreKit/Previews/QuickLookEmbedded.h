#pragma once

#include "Previews/QuickLookLimits.h"
#include "Previews/QuickLookPage.h"

#include <optional>

namespace wendlore {

/// The picture of its first page that a document, or a package that is a directory, brings along. Nothing
/// when there is none.
[[nodiscard]] std::optional<QuickLookPage> embeddedPreview(const FileURL& file,
                                                           const QuickLookLimits& limits);

/// What is in a package that is a directory, as a list; nothing when that is nothing.
[[nodiscard]] std::optional<QuickLookPage> packagePage(const FileURL& package, const QuickLookLimits& limits);

} // namespace wendlore
