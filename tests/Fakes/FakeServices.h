#pragma once

#include "Fakes/FakeDesktop.h"
#include "Fakes/FakeEditorWebView.h"
#include "Fakes/ManualScheduler.h"
#include "Fakes/MemoryCloud.h"
#include "Fakes/MemoryDefaults.h"
#include "State/Services.h"
#include "Vault/RecoveredTexts.h"

#include <QTemporaryDir>

namespace wendlore {

/// A whole desktop for one test: settings in memory, a clock to turn by hand, a page without an engine.
class FakeServices final
{
public:
    [[nodiscard]] Services services()
    {
        return {
            defaults, cloud, bookmarks, coordinator, workspace, panels, scheduler, recovered, trash, [this] {
                auto view = std::make_unique<FakeEditorWebView>();
                page = view.get();
                return view;
            }};
    }

    QTemporaryDir stateDirectory;
    MemoryDefaults defaults;
    MemoryCloud cloud;
    FakeBookmarks bookmarks;
    FakeFileCoordinator coordinator;
    FakeWorkspace workspace;
    FakePanels panels;
    ManualScheduler scheduler;
    RecoveredTexts recovered{FileURL::directory(stateDirectory.filePath(QStringLiteral("recovered")))};
    FakeTrash trash{FileURL::directory(stateDirectory.filePath(QStringLiteral("trash")))};
    /// The page made last; it belongs to its controller.
    FakeEditorWebView* page = nullptr;
};

} // namespace wendlore
