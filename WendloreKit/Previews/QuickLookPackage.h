#pragma once

#include "Decoder/QuickLookLimits.h"
#include "Previews/QuickLookLoading.h"

namespace wendlore {

/// The preview of a package that is a directory: the pages that it brings along as they are printed, or else
/// the picture of the first of them, or else what is in it, as a list. The card when that is nothing.
[[nodiscard]] QuickLookContent loadPackage(const FileURL& package, const QuickLookLimits& limits);

} // namespace wendlore
