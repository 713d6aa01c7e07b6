#include "State/AppState.h"

#include "Editor/Scheduler.h"
#include "Vault/FileTree.h"

namespace wendlore {

namespace {

using Tree = std::vector<FileNode>;

std::shared_ptr<const Tree> treeOf(const std::optional<FileURL>& bucket)
{
    return std::make_shared<const Tree>(bucket ? buildTree(*bucket) : Tree());
}

} // namespace

void AppState::reloadTree()
{
    ++m_treeReads;
    std::shared_ptr<const Tree> tree = treeOf(m_vaultURL);
    if (*tree == *m_fileTree)
        return;
    m_fileTree = std::move(tree);
    noteChange(&AppState::fileTreeChanged);
}

void AppState::reloadTreeInBackground(std::function<void()> then)
{
    const auto read = [this, bucket = m_vaultURL, shown = m_fileTree, reads = m_treeReads,
                       then = std::move(then)]() -> std::function<void()> {
        const std::shared_ptr<const Tree> tree = treeOf(bucket);
        return [this, tree, isChanged = *tree != *shown, reads, then] {
            if (reads != m_treeReads) { // what was read since may be newer
                reloadTreeInBackground(then);
                return;
            }
            ++m_treeReads;
            if (isChanged) {
                m_fileTree = tree;
                noteChange(&AppState::fileTreeChanged);
            }
            then();
        };
    };
    m_treeReading = m_services.scheduler.inBackground(read);
}

std::optional<FileURL> AppState::activeDirectory() const
{
    if (m_selectedFolder)
        return m_selectedFolder;
    return m_selectedFile ? m_selectedFile->deletingLastPathComponent() : m_vaultURL;
}

} // namespace wendlore
