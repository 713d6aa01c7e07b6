#pragma once

#include "Editor/NoteSaver.h"

#include "Vault/FileURL.h"

#include <QObject>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace wendlore {

class AppState;
class ScheduledTask;
class WebEditorController;

/// What a window is doing.
enum class ScenePhase { Active, Inactive, Background };

/// Edits one note: reads it, hands it to the editor page, writes every edit after a pause or at once when the
/// window is left, and keeps what somebody else wrote meanwhile as a conflict copy.
///
/// The page answers late: an edit may arrive after the page was given another content. So every content
/// remembers its note and the text it was based on, and an edit is judged by the content it was typed into.
/// The session has to live as long as such edits may come, longer than any view of it.
class EditorSession final : public QObject
{
    Q_OBJECT

public:
    using Clock = NoteSaver::Clock;

    EditorSession(
        AppState& appState, WebEditorController& controller,
        Clock now = [] { return QDateTime::currentDateTime(); }, QObject* parent = nullptr);
    /// Writes what is waiting to be written.
    ~EditorSession() override;

    /// The note that is edited; nothing while none is.
    [[nodiscard]] const std::optional<FileURL>& fileURL() const { return m_fileURL; }
    /// The note's name as the window's title shows it.
    [[nodiscard]] const QString& title() const { return m_title; }
    /// What the user has to be told about a conflict; empty when there is nothing to tell.
    [[nodiscard]] const QString& conflictNotice() const { return m_conflictNotice; }
    /// True while something is not written yet; after a `flush`, when it could be kept nowhere at all.
    [[nodiscard]] bool hasUnsavedText() const { return !m_unsaved.empty(); }
    [[nodiscard]] bool isLoading() const { return m_read != nullptr; }

    /// Writes what is waiting and goes on with `note`.
    void open(const FileURL& note);
    /// Writes what is waiting and leaves the note.
    void close();
    /// Renames the note; a blank name or one that is taken changes nothing.
    void setTitle(const QString& title);
    void setDark(bool dark);
    /// An active window takes over what changed on disk; any other phase writes what is waiting.
    void setScenePhase(ScenePhase phase);
    /// Writes what is waiting, now.
    void flush();
    /// Waits until the keys that were typed so far have arrived, for a limited time, writes them, and calls
    /// `done`.
    void settle(std::function<void()> done);
    void dismissConflictNotice();

Q_SIGNALS:
    void fileURLChanged();
    void titleChanged();
    void conflictNoticeChanged();
    /// The page was given what was read from disk, or showed it already.
    void loaded();
    /// The caret was put into the page, which is to get the keys.
    void focusTaken();

private:
    /// A text that was put into the page, and the edits made to it.
    struct Content final
    {
        FileURL note;
        /// What the session believes to be on disk: the text read, or the one written last.
        QString baseline;
        std::optional<QString> pendingSave;
        bool isDeleted = false;
    };
    using SharedContent = std::shared_ptr<Content>;

    void wire();
    void load();
    void didRead(const std::optional<QString>& read);
    void reloadIfCleanExternalChange();
    /// Takes the text that was read from disk over into the page.
    void takeOver(const std::optional<QString>& read);
    void show(const QString& text);
    void takeFocus();
    /// Goes to what the search found in the note.
    void showMatch();
    /// True when the page shows the note that is edited, rather than one that was left.
    [[nodiscard]] bool isShown() const;
    void handleLink(const QString& href, bool isWiki, const FileURL& note);

    void edited(const SharedContent& content, const QString& markdown);
    void editedBeforeReload(const SharedContent& content, const QString& markdown);
    void scheduleSave(const SharedContent& content, const QString& markdown);
    void commitSave(SharedContent content, QString markdown);

    void settled(int number);

    void didMove(const FileURL& from, const FileURL& to);
    void didDelete(const FileURL& item);
    void setFileURL(const std::optional<FileURL>& note);
    void setConflictNotice(const QString& notice);

    AppState& m_appState;
    WebEditorController& m_controller;
    NoteSaver m_saver;
    std::optional<FileURL> m_fileURL;
    QString m_title;
    QString m_conflictNotice;
    bool m_isDark = false;
    /// The content that the page was given last.
    SharedContent m_content;
    /// Every content that an edit may still come for.
    std::vector<std::weak_ptr<Content>> m_contents;
    /// Contents with a pending save.
    std::vector<SharedContent> m_unsaved;
    std::unique_ptr<ScheduledTask> m_saveTask;
    std::unique_ptr<ScheduledTask> m_read;
    /// The note was written since the read began, so what it gives is out of date.
    bool m_mustReadAgain = false;
    /// Who waits for the last keys, by the number of the call, and until when.
    struct Settling final
    {
        std::function<void()> done;
        std::unique_ptr<ScheduledTask> timeOut;
    };
    std::map<int, Settling> m_settling;
    int m_lastSettling = 0;
};

} // namespace wendlore
