#pragma once

#include "Decoder/QuickLookFile.h"
#include "Decoder/QuickLookPage.h"

#include <optional>

namespace wendlore {

/// Sound, film, drawings and fonts, which the web engine plays and draws by itself; nothing for a file of
/// another extension, and for one that is not what its extension says.
[[nodiscard]] std::optional<QuickLookPage> mediaPage(const QuickLookFile& file);

} // namespace wendlore
