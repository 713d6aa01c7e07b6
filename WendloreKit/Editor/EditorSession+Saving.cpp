#include "Editor/EditorSession.h"

#include "Editor/Scheduler.h"
#include "Editor/WebEditorController.h"

#include "State/AppState.h"

#include "Vault/RecoveredTexts.h"
#include "Vault/Relocation.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace wendlore {

namespace {

constexpr auto saveDelay = 1200ms;

QString conflictText(const FileURL& copy)
{
    return u"Noten ändrades av någon annan medan du redigerade. Deras version sparades som “"_s +
           copy.lastPathComponent() + u"” så inget gick förlorat."_s;
}

} // namespace

void EditorSession::edited(const SharedContent& content, const QString& markdown)
{
    const bool isOfThisNote = isShown() && content->note == m_content->note;
    if (isOfThisNote && content == m_content)
        scheduleSave(content, markdown);
    else if (isOfThisNote)
        editedBeforeReload(content, markdown);
    else
        commitSave(content, markdown);
}

void EditorSession::editedBeforeReload(const SharedContent& content, const QString& markdown)
{
    // The page has been given another text of the same note meanwhile. What was typed takes the note's place,
    // the other text goes to a conflict copy by the ordinary rule, and the page gets what was typed back:
    // else the next edit, made to the other text, would drop it.
    flush();
    show(markdown);
    m_content->baseline = content->baseline;
    commitSave(m_content, markdown);
    content->baseline = m_content->baseline;
}

void EditorSession::scheduleSave(const SharedContent& content, const QString& markdown)
{
    content->pendingSave = markdown;
    if (std::ranges::find(m_unsaved, content) == m_unsaved.end())
        m_unsaved.push_back(content);
    m_saveTask = m_appState.services().scheduler.after(saveDelay, [this] { flush(); });
}

void EditorSession::flush()
{
    const auto finished = std::move(m_saveTask);
    for (const SharedContent& content : std::exchange(m_unsaved, {})) {
        if (content->pendingSave)
            commitSave(content, *content->pendingSave);
    }
}

void EditorSession::commitSave(SharedContent content, QString markdown)
{
    content->pendingSave.reset();
    std::erase(m_unsaved, content);
    const bool isShownNow = content == m_content && isShown();
    if (content->isDeleted && !isShownNow) {
        m_appState.services().recovered.keep(content->note, markdown.toUtf8(), u"the note was deleted"_s);
        return;
    }
    const NoteSaver::Result saved = m_saver.save(content->note, content->baseline, markdown);
    if (!saved.isKept) {
        // Neither our text nor theirs may go: it is tried again until there is room for both.
        scheduleSave(content, markdown);
        return;
    }
    content->baseline = markdown;
    content->isDeleted = false;
    if (m_read && content->note == m_fileURL)
        m_mustReadAgain = true;
    if (saved.conflictCopy.isEmpty())
        return;
    m_appState.reloadTreeAround(content->note.deletingLastPathComponent());
    setConflictNotice(conflictText(saved.conflictCopy));
}

void EditorSession::didMove(const FileURL& from, const FileURL& to)
{
    for (const auto& weak : m_contents) {
        if (const SharedContent content = weak.lock())
            content->note = relocated(content->note, from, to);
    }
    if (!m_fileURL || relocated(*m_fileURL, from, to) == *m_fileURL)
        return;
    setFileURL(relocated(*m_fileURL, from, to));
    if (m_read)
        load();
}

void EditorSession::didDelete(const FileURL& item)
{
    for (const auto& weak : m_contents) {
        const SharedContent content = weak.lock();
        if (content && (content->note.hasPathOf(item) || content->note.isBelow(item)))
            content->isDeleted = true;
    }
}

} // namespace wendlore
