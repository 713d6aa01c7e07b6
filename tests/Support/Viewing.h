#pragma once

#include "Previews/PDFKitView.h"
#include "Previews/ZoomableImage.h"

#include <QWebEngineView>

namespace wendlore {

/// Whether a viewer has got so far that its file is seen: pages, a picture, or a web page that is loaded.
[[nodiscard]] inline bool showsItsFile(const QWidget& viewer)
{
    const auto* page = viewer.findChild<QWebEngineView*>();
    return viewer.findChild<PDFKitView*>() || viewer.findChild<ZoomableImage*>() ||
           (page && !page->url().isEmpty() && !page->page()->isLoading());
}

} // namespace wendlore
