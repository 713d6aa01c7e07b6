#pragma once

#include "Editor/EditorSession.h"
#include "Editor/WebEditorController.h"
#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"

#include <memory>

namespace wendlore {

/// A session over a real folder and a page without an engine: the clock stands at 09:32 until a test moves
/// it, reads finish when a test lets them, and the page says what a test lets it say.
class EditingFixture final
{
public:
    explicit EditingFixture(std::initializer_list<std::pair<const char*, const char*>> notes)
        : bucket(notes)
        , state(std::make_unique<AppState>(desktop.services()))
        , page(desktop.page)
    {
        state->addVault(bucket.root());
        session = std::make_unique<EditorSession>(*state, state->editorController(), [this] { return now; });
        page->post(QStringLiteral("ready"));
        page->scripts.clear();
    }

    /// Opens the note at `path` and lets its read finish.
    void open(const QString& path)
    {
        session->open(bucket.file(path));
        desktop.scheduler.finishBackgroundWork();
    }
    /// The page reports `text` as the note's new text.
    void type(const QString& text) { page->post(QStringLiteral("changed"), text); }
    void typeLate(const QString& text, EditorWebView::Generation shown)
    {
        page->postLate(QStringLiteral("changed"), text, shown);
    }
    void wait(std::chrono::milliseconds time) { desktop.scheduler.advance(time); }
    /// The window loses the focus and gets it back.
    void deactivate() { session->setScenePhase(ScenePhase::Inactive); }
    void activate() { session->setScenePhase(ScenePhase::Active); }

    /// What the page shows, as far as the host knows.
    [[nodiscard]] QString shown() const
    {
        return state->editorController().desiredContent().value_or(QString());
    }
    /// Everything that was kept because a rule would have dropped it.
    [[nodiscard]] QList<QByteArray> recoveredTexts() const
    {
        QList<QByteArray> texts;
        const QDir folder(desktop.recovered.directory().path());
        for (const QFileInfo& info : folder.entryInfoList(QDir::Files, QDir::Name)) {
            QFile file(info.filePath());
            if (file.open(QIODevice::ReadOnly))
                texts.append(file.readAll());
        }
        return texts;
    }

    QDateTime now{QDate(2025, 3, 14), QTime(9, 32)};
    Bucket bucket;
    FakeServices desktop;
    std::unique_ptr<AppState> state;
    FakeEditorWebView* page;
    std::unique_ptr<EditorSession> session;
};

} // namespace wendlore
