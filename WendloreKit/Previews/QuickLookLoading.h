#pragma once

#include "Decoder/QuickLookLimits.h"
#include "Decoder/QuickLookPage.h"
#include "Previews/QuickLookCache.h"

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

/// The pages that a document brings along as they are printed, kept in the cache; nothing when there are
/// none.
[[nodiscard]] std::optional<QuickLookPdf> embeddedPages(const FileURL& document,
                                                        const QuickLookLimits& limits,
                                                        const QuickLookCache& cache = QuickLookCache());

} // namespace wendlore
