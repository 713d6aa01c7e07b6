#include "State/AppState.h"

#include "Vault/DiskEntry.h"

namespace wendlore {

void AppState::recordHistory(const std::optional<FileURL>& previous)
{
    if (!m_isNavigatingHistory && m_history.record(previous, m_selectedFile))
        noteChange(&AppState::historyChanged);
}

void AppState::goBack()
{
    if (m_history.canGoBack())
        applyHistoryEntry(m_history.back(&existsOnDisk));
}

void AppState::goForward()
{
    if (m_history.canGoForward())
        applyHistoryEntry(m_history.forward(&existsOnDisk));
}

void AppState::applyHistoryEntry(const std::optional<FileURL>& entry)
{
    Operation operation(*this);
    noteChange(&AppState::historyChanged);
    if (!entry)
        return;
    m_isNavigatingHistory = true;
    setSelectedFile(entry);
    m_isNavigatingHistory = false;
}

} // namespace wendlore
