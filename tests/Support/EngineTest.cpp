#include "Support/EngineTest.h"

#include "Editor/WebEngineEditorView.h"

#include <unistd.h>

namespace wendlore {

void prepareEngine()
{
    if (::geteuid() == 0)
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    registerEditorScheme();
}

} // namespace wendlore
