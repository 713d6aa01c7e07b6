#include "Platform/Desktop.h"

#include "Platform/StandardPaths.h"

#include "Editor/WebEngineEditorView.h"
#include "Vault/AtomicFile.h"

#include <QDeadlineTimer>
#include <QThreadPool>

using namespace Qt::StringLiterals;

namespace wendlore {

ProgramFolders ProgramFolders::standard()
{
    return {StandardPaths::configDirectory(), StandardPaths::dataDirectory(),
            StandardPaths::stateDirectory()};
}

Desktop::Desktop(const ProgramFolders& folders)
    : m_defaults(folders.config.appending(u"settings.json"_s))
    , m_cloud(SyncedFolderStore::chosenFolder(m_defaults, folders.data.appending(u"cloud"_s, true)),
              SyncedFolderStore::thisDevice(folders.config), folders.state.appending(u"cloud.lock"_s))
    , m_recovered(folders.state.appending(u"recovered"_s, true))
{
    AtomicFile::setBackupDirectory(folders.state.appending(u"interrupted"_s, true));
    AtomicFile::settleInterruptedWrites(m_recovered);
}

Services Desktop::services()
{
    return {m_defaults,  m_cloud,
            m_bookmarks, m_coordinator,
            m_workspace, m_panels,
            m_scheduler, m_recovered,
            m_trash,     [] { return std::make_unique<WebEngineEditorView>(); }};
}

bool Desktop::waitForWork(std::chrono::milliseconds patience)
{
    const QDeadlineTimer end(patience);
    return m_scheduler.waitForWork(patience) &&
           QThreadPool::globalInstance()->waitForDone(static_cast<int>(end.remainingTime()));
}

} // namespace wendlore
