#include "State/AppState.h"

#include "State/UserDefaults.h"

#include "Vault/DiskEntry.h"
#include "Vault/FileTree.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

const QString uiStatesKey = u"wendloreVaultUIState"_s;
const QString sidebarWidthKey = u"wendloreSidebarWidthDefault"_s;

std::optional<QString> pathOf(const std::optional<FileURL>& url)
{
    return url ? std::optional(url->path()) : std::nullopt;
}

/// The location that a stored path stands for, as `tree` holds it where it does; nothing when the disk has
/// nothing of that kind there.
std::optional<FileURL> storedLocation(const std::optional<QString>& path, DiskEntry kind,
                                      const std::vector<FileNode>& tree)
{
    if (!path)
        return std::nullopt;
    const bool isFolder = kind == DiskEntry::Folder;
    const FileURL url = isFolder ? FileURL::directory(*path) : FileURL::file(*path);
    if (diskEntry(url) != kind)
        return std::nullopt;
    return urlInTree(*path, tree).value_or(url);
}

} // namespace

void AppState::persistSelection()
{
    if (!m_vaultURL)
        return;
    VaultUIStates states = loadUIStates();
    VaultUIState& state = states[m_vaultURL->path()];
    state.selectedFilePath = pathOf(m_selectedFile);
    state.selectedFolderPath = pathOf(m_selectedFolder);
    saveUIStates(states);
}

void AppState::restoreSelection(const FileURL& bucket)
{
    Operation operation(*this);
    const VaultUIState state = loadUIStates().value(bucket.path());
    // The folder is not saved on its own: with the file of another bucket beside it, it would lose this
    // one's.
    store(m_selectedFolder, storedLocation(state.selectedFolderPath, DiskEntry::Folder, m_tree.nodes()),
          &AppState::selectedFolderChanged);
    setSelectedFile(storedLocation(state.selectedFilePath, DiskEntry::File, m_tree.nodes()));
}

VaultUIStates AppState::loadUIStates() const
{
    return vaultUIStatesFromJson(m_services.defaults.data(uiStatesKey).value_or(QByteArray()));
}

void AppState::saveUIStates(const VaultUIStates& states)
{
    m_services.defaults.setData(uiStatesKey, toJson(states));
}

std::optional<double> AppState::savedSidebarWidth(const FileURL& bucket) const
{
    if (const auto width = loadUIStates().value(bucket.path()).sidebarWidth)
        return width;
    const double lastWidth = m_services.defaults.number(sidebarWidthKey);
    return lastWidth > 0 ? std::optional(lastWidth) : std::nullopt;
}

void AppState::saveSidebarWidth(double width, const FileURL& bucket)
{
    if (!std::isfinite(width))
        return;
    VaultUIStates states = loadUIStates();
    states[bucket.path()].sidebarWidth = width;
    saveUIStates(states);
    m_services.defaults.setNumber(sidebarWidthKey, width);
}

} // namespace wendlore
