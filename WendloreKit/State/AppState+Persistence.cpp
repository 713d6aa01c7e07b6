#include "State/AppState.h"

#include "State/UserDefaults.h"

#include "Vault/DiskEntry.h"

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

/// The location that a stored path stands for; nothing when the disk has nothing of that kind there.
std::optional<FileURL> storedLocation(const std::optional<QString>& path, DiskEntry kind)
{
    if (!path)
        return std::nullopt;
    const bool isFolder = kind == DiskEntry::Folder;
    const FileURL url = isFolder ? FileURL::directory(*path) : FileURL::file(*path);
    return diskEntry(url) == kind ? std::optional(url) : std::nullopt;
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
    store(m_selectedFolder, storedLocation(state.selectedFolderPath, DiskEntry::Folder),
          &AppState::selectedFolderChanged);
    setSelectedFile(storedLocation(state.selectedFilePath, DiskEntry::File));
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
