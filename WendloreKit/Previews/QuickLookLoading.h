#pragma once

#include "Previews/QuickLookLimits.h"
#include "Previews/QuickLookPage.h"

#include <variant>

namespace wendlore {

class FileCoordinator;

/// There is nothing better than the card; `message` says why when the user can do something about it.
struct QuickLookCard final
{
    QString message;
};

using QuickLookContent = std::variant<QuickLookCard, QuickLookPage, QuickLookPdf>;

/// Makes the preview of a file, by its extension and by what it holds. Blocks: to be called in the
/// background. Never fails: what cannot be read, is damaged or takes too long gives the card.
[[nodiscard]] QuickLookContent loadQuickLook(FileCoordinator& coordinator, const FileURL& file,
                                             const QuickLookLimits& limits);

} // namespace wendlore
