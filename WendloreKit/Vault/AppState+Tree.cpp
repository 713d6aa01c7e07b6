#include "State/AppState.h"

#include "Vault/FileTree.h"

namespace wendlore {

void AppState::reloadTree()
{
    store(m_fileTree, m_vaultURL ? buildTree(*m_vaultURL) : std::vector<FileNode>(),
          &AppState::fileTreeChanged);
}

std::optional<FileURL> AppState::activeDirectory() const
{
    if (m_selectedFolder)
        return m_selectedFolder;
    return m_selectedFile ? m_selectedFile->deletingLastPathComponent() : m_vaultURL;
}

} // namespace wendlore
