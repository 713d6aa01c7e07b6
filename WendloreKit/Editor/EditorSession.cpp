#include "Editor/EditorSession.h"

#include "Editor/NoteText.h"
#include "Editor/Scheduler.h"
#include "Editor/WebEditorController.h"

#include "State/AppState.h"
#include "State/Workspace.h"

#include "Vault/AtomicFile.h"
#include "Vault/FileCoordinator.h"
#include "Vault/RecoveredTexts.h"

#include <QPointer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// The note's text; nothing when it cannot be read as text.
std::optional<QString> readNote(FileCoordinator& coordinator, const FileURL& note)
{
    const std::optional<QByteArray> bytes = coordinator.readWhole(note);
    return bytes ? noteText(*bytes) : std::nullopt;
}

/// True for web, mail and other addresses that the desktop opens. Names of wiki links are only taken for an
/// address when they are written as one ("Möte: plan" is a name).
bool isAddress(const QString& href, bool isWiki)
{
    const QUrl address(href, isWiki ? QUrl::StrictMode : QUrl::TolerantMode);
    return address.isValid() && !address.scheme().isEmpty();
}

} // namespace

EditorSession::EditorSession(AppState& appState, WebEditorController& controller, Clock now, QObject* parent)
    : QObject(parent)
    , m_appState(appState)
    , m_controller(controller)
    , m_saver(appState.services().coordinator, appState.services().recovered, appState.services().workspace,
              std::move(now))
{
    connect(&appState, &AppState::aboutToMove, this, &EditorSession::flush);
    connect(&appState, &AppState::didMove, this, &EditorSession::didMove);
    connect(&appState, &AppState::didDelete, this, &EditorSession::didDelete);
    connect(&appState, &AppState::searchHitOpened, this, &EditorSession::showMatch);
    connect(&appState, &AppState::typographyThemeChanged, this,
            [this] { m_controller.setTypography(m_appState.typographyTheme()); });
}

EditorSession::~EditorSession()
{
    flush();
}

void EditorSession::open(const FileURL& note)
{
    if (m_fileURL == note)
        return;
    flush();
    setFileURL(note);
    wire();
    load();
}

void EditorSession::close()
{
    flush();
    m_read.reset();
    setFileURL(std::nullopt);
}

void EditorSession::setTitle(const QString& title)
{
    if (!m_fileURL)
        return;
    if (title != m_title) {
        const FileURL note = *m_fileURL; // which changes when the note has moved
        m_appState.renameFile(note, title);
    }
    // Whatever came of it, the window shows the name that the note has now.
    Q_EMIT titleChanged();
}

void EditorSession::setDark(bool dark)
{
    m_isDark = dark;
    m_controller.setTheme(dark);
}

void EditorSession::setScenePhase(ScenePhase phase)
{
    if (phase == ScenePhase::Active)
        reloadIfCleanExternalChange();
    else
        flush();
}

void EditorSession::dismissConflictNotice()
{
    setConflictNotice({});
}

void EditorSession::wire()
{
    m_controller.setVaultProvider(
        [state = QPointer(&m_appState)] { return state ? state->vaultURL() : std::nullopt; });
    m_controller.setTheme(m_isDark);
    m_controller.setTypography(m_appState.typographyTheme());
    m_controller.setZoom(m_appState.editorZoom());
}

void EditorSession::load()
{
    m_mustReadAgain = false;
    m_read = m_appState.services().scheduler.inBackground(
        [this, &coordinator = m_appState.services().coordinator, &recovered = m_appState.services().recovered,
         note = *m_fileURL]() -> std::function<void()> {
            // What a cut-off save of an earlier run left beside the note goes now.
            AtomicFile::sweepLeftovers(note.deletingLastPathComponent());
            AtomicFile::recoverDisplaced(note.deletingLastPathComponent(), recovered);
            coordinator.startDownloading(note);
            return [this, read = readNote(coordinator, note)] { didRead(read); };
        });
}

void EditorSession::didRead(const std::optional<QString>& read)
{
    const auto finished = std::move(m_read);
    if (isShown() && m_content->pendingSave) {
        // Typed while the note was read again: the edit is written first, so that the read finds it.
        flush();
        if (m_content->pendingSave)
            return;
        m_mustReadAgain = true;
    }
    if (m_mustReadAgain) {
        load();
        return;
    }
    takeOver(read);
    takeFocus();
    showMatch();
    Q_EMIT loaded();
}

void EditorSession::reloadIfCleanExternalChange()
{
    if (m_read) {
        m_mustReadAgain = true;
        return;
    }
    if (!isShown() || m_content->pendingSave)
        return;
    const auto read = readNote(m_appState.services().coordinator, *m_fileURL);
    if (read.value_or(QString()) != m_content->baseline)
        takeOver(read);
}

void EditorSession::takeOver(const std::optional<QString>& read)
{
    const QString text = read.value_or(QString());
    const QString shown = isShown() ? m_controller.desiredContent().value_or(QString()) : QString();
    if (isShown() && text == shown) {
        m_content->baseline = text;
        m_content->isDeleted = false; // what was deleted there may have come back
        return;
    }
    if (text.isEmpty() && !shown.isEmpty())
        m_appState.services().recovered.keep(*m_fileURL, shown.toUtf8(),
                                             read ? u"the note was emptied on disk"_s
                                                  : u"the note could not be read any more"_s);
    show(text);
}

void EditorSession::show(const QString& text)
{
    m_content = std::make_shared<Content>();
    m_content->note = *m_fileURL;
    m_content->baseline = text;
    std::erase_if(m_contents, [](const auto& content) { return content.expired(); });
    m_contents.push_back(m_content);

    m_controller.setOnChanged([session = QPointer(this), content = m_content](const QString& markdown) {
        if (session)
            session->edited(content, markdown);
    });
    m_controller.setOnOpenLink(
        [session = QPointer(this), content = m_content](const QString& href, bool isWiki) {
            if (session)
                session->handleLink(href, isWiki, content->note);
        });
    m_controller.setContent(text);
}

void EditorSession::takeFocus()
{
    if (m_appState.pendingFocusFile() != m_fileURL)
        return;
    m_controller.focus();
    m_appState.setPendingFocusFile(std::nullopt);
    Q_EMIT focusTaken();
}

void EditorSession::showMatch()
{
    if (!isShown() || m_read)
        return;
    const QString text = m_appState.takeSoughtText(*m_fileURL);
    if (!text.isEmpty())
        m_controller.exec(u"showMatch"_s, text);
}

bool EditorSession::isShown() const
{
    return m_content && m_fileURL == m_content->note;
}

void EditorSession::handleLink(const QString& href, bool isWiki, const FileURL& note)
{
    if (isAddress(href, isWiki))
        m_appState.services().workspace.open(QUrl(href));
    else
        m_appState.openLink(href, note, isWiki);
}

void EditorSession::setFileURL(const std::optional<FileURL>& note)
{
    m_fileURL = note;
    m_title = note ? note->nameWithoutExtension() : QString();
    Q_EMIT fileURLChanged();
    Q_EMIT titleChanged();
}

void EditorSession::setConflictNotice(const QString& notice)
{
    if (notice == m_conflictNotice)
        return;
    m_conflictNotice = notice;
    Q_EMIT conflictNoticeChanged();
}

} // namespace wendlore
