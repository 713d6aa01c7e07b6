#pragma once

#include "Editor/WebEngineEditorView.h"
#include "Fakes/FakeDesktop.h"
#include "Fakes/MemoryCloud.h"
#include "Platform/CoordinatedReader.h"
#include "Platform/PathBookmarks.h"
#include "Platform/QtScheduler.h"
#include "Platform/SettingsFile.h"
#include "State/Services.h"
#include "Vault/RecoveredTexts.h"

#include <QTemporaryDir>

namespace wendlore {

/// The desktop that the program runs on, with its settings in a folder of its own; only dialogs and other
/// programs are played by the test.
class RealDesktop final
{
public:
    [[nodiscard]] Services services()
    {
        return {
            defaults, cloud, bookmarks, coordinator, workspace, panels, scheduler, recovered, trash, [this] {
                auto view = std::make_unique<WebEngineEditorView>();
                engine = view.get();
                return view;
            }};
    }

    QTemporaryDir folder;
    SettingsFile defaults{FileURL::file(folder.filePath(QStringLiteral("settings.json")))};
    MemoryCloud cloud;
    PathBookmarks bookmarks;
    CoordinatedReader coordinator;
    FakeWorkspace workspace;
    FakePanels panels;
    QtScheduler scheduler;
    RecoveredTexts recovered{FileURL::directory(folder.filePath(QStringLiteral("recovered")))};
    FakeTrash trash{FileURL::directory(folder.filePath(QStringLiteral("trash")))};
    /// The engine's view made last; it belongs to its controller.
    WebEngineEditorView* engine = nullptr;
};

} // namespace wendlore
