#pragma once

#include "Editor/WebEngineEditorView.h"
#include "Previews/HtmlSchemeHandler.h"
#include "Previews/QuickLookWebView.h"

namespace wendlore {

/// Makes every address scheme of the library known to the web engine. Whoever shows its views calls this
/// once, before the application object is made.
inline void registerWendloreSchemes()
{
    registerEditorScheme();
    registerHtmlScheme();
    registerQuickLookScheme();
}

} // namespace wendlore
