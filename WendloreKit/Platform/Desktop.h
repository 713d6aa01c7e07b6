#pragma once

#include "Platform/CoordinatedReader.h"
#include "Platform/DesktopWorkspace.h"
#include "Platform/FilePanels.h"
#include "Platform/FreedesktopTrash.h"
#include "Platform/PathBookmarks.h"
#include "Platform/QtScheduler.h"
#include "Platform/SettingsFile.h"
#include "Platform/SyncedFolderStore.h"

#include "State/Services.h"
#include "Vault/RecoveredTexts.h"

namespace wendlore {

/// Where a program keeps what is its own. The folders need not exist.
struct ProgramFolders final
{
    FileURL config; ///< settings
    FileURL data;   ///< the list of buckets that devices share
    FileURL state;  ///< recovered texts, and what ends writes that were cut off

    /// Those of this program, where the user's environment wants them.
    [[nodiscard]] static ProgramFolders standard();
};

/// The services of the desktop that the program runs on, for every state that is made in it.
class Desktop final
{
public:
    /// Ends the writes that an earlier run was torn from.
    explicit Desktop(const ProgramFolders& folders = ProgramFolders::standard());

    [[nodiscard]] Services services();
    /// Waits for work in the background, as long as `patience`; false when some of it still goes on.
    [[nodiscard]] bool waitForWork(std::chrono::milliseconds patience);
    [[nodiscard]] SettingsFile& defaults() { return m_defaults; }

private:
    SettingsFile m_defaults;
    SyncedFolderStore m_cloud;
    PathBookmarks m_bookmarks;
    CoordinatedReader m_coordinator;
    DesktopWorkspace m_workspace;
    FilePanels m_panels;
    QtScheduler m_scheduler;
    RecoveredTexts m_recovered;
    FreedesktopTrash m_trash;
};

} // namespace wendlore
