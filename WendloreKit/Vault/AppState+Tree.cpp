#include "State/AppState.h"

#include "Vault/DiskEntry.h"

namespace wendlore {

namespace {

bool isFolderOnDisk(const FileURL& folder)
{
    return diskEntry(folder) == DiskEntry::Folder;
}

} // namespace

void AppState::reloadTree()
{
    m_tree.read();
}

void AppState::reloadTreeInBackground(std::function<void()> then)
{
    m_tree.readInBackground(std::move(then));
}

void AppState::reloadTreeAround(const FileURL& folder)
{
    m_tree.updateFolder(folder);
}

void AppState::reloadTreeAfterMove(const FileURL& from, const FileURL& to)
{
    m_tree.updateMoved(from, to);
}

std::optional<FileURL> AppState::activeDirectory() const
{
    if (m_selectedFolder && isFolderOnDisk(*m_selectedFolder))
        return m_selectedFolder;
    if (!m_selectedFile)
        return m_vaultURL;
    const FileURL folder = m_selectedFile->deletingLastPathComponent();
    return isFolderOnDisk(folder) ? folder : m_vaultURL;
}

} // namespace wendlore
