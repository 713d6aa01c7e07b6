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

/// How long the program waits for the user to pause: as it does, or hardly at all where a test is about
/// something else.
enum class Pauses { real, brief };

/// The program's scheduler, which may pass pauses in the user's work faster. How long it is patient with the
/// engine stays as it is.
class PacedScheduler final : public Scheduler
{
public:
    explicit PacedScheduler(Pauses pauses)
        : m_pauses(pauses)
    {}

    [[nodiscard]] std::unique_ptr<ScheduledTask> after(std::chrono::milliseconds delay,
                                                       std::function<void()> work) override
    {
        constexpr std::chrono::milliseconds longestPause(1500);
        constexpr int pace = 20;
        const bool isShortened = m_pauses == Pauses::brief && delay <= longestPause;
        return m_scheduler.after(isShortened ? delay / pace : delay, std::move(work));
    }
    [[nodiscard]] std::unique_ptr<ScheduledTask>
    inBackground(std::function<std::function<void()>()> work) override
    {
        return m_scheduler.inBackground(std::move(work));
    }
    [[nodiscard]] bool waitForWork(std::chrono::milliseconds longest)
    {
        return m_scheduler.waitForWork(longest);
    }

private:
    Pauses m_pauses;
    QtScheduler m_scheduler;
};

/// The desktop that the program runs on, with its settings in a folder of its own; only dialogs and other
/// programs are played by the test.
class RealDesktop final
{
public:
    explicit RealDesktop(Pauses pauses = Pauses::real)
        : scheduler(pauses)
    {}

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
    PacedScheduler scheduler;
    RecoveredTexts recovered{FileURL::directory(folder.filePath(QStringLiteral("recovered")))};
    FakeTrash trash{FileURL::directory(folder.filePath(QStringLiteral("trash")))};
    /// The engine's view made last; it belongs to its controller.
    WebEngineEditorView* engine = nullptr;
};

} // namespace wendlore
