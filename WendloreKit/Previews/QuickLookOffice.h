#pragma once

#include "Previews/QuickLookCache.h"
#include "Previews/QuickLookLoading.h"

namespace wendlore {

/// Whether the file is a document of an office program, by its extension.
[[nodiscard]] bool isOfficeDocument(const FileURL& file);

/// The office program that makes previews of documents; empty when it is not installed.
[[nodiscard]] QString officeProgram();

/// The preview of the document as it is now, when one was made before.
[[nodiscard]] std::optional<QuickLookContent> keptDocument(const FileURL& file,
                                                           const QuickLookCache& cache = QuickLookCache());

/// The document as pages or, for spreadsheets, as tables; what was made before comes from the cache. One
/// conversion goes on at a time, for a minute at most, in a process of its own that has no network, runs no
/// macros and sees a copy of the document. The card says when there is no office program. Blocks: to be
/// called in the background.
[[nodiscard]] QuickLookContent convertDocument(const FileURL& file, const QuickLookLimits& limits,
                                               const QuickLookCache& cache = QuickLookCache());

} // namespace wendlore
