#include "State/AppState.h"

#include "State/CloudKeyValueStore.h"
#include "State/FolderBookmarks.h"
#include "State/Panels.h"
#include "State/UserDefaults.h"

#include <QUuid>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

const QString bookmarksKey = u"vaultBookmarks"_s;
/// Where an older version kept its only bucket.
const QString legacyBookmarkKey = u"vaultBookmark"_s;
const QString currentKey = u"currentVaultPath"_s;
const QString kvsVaultsKey = u"wendlore_synced_vaults"_s;

auto isAt(const FileURL& folder)
{
    return [&folder](const FileURL& vault) { return vault.hasPathOf(folder); };
}

} // namespace

void AppState::restoreVaults()
{
    UserDefaults& defaults = m_services.defaults;
    if (!defaults.dataList(bookmarksKey)) {
        if (const auto bookmark = defaults.data(legacyBookmarkKey))
            defaults.setDataList(bookmarksKey, {*bookmark});
    }

    std::vector<FileURL> vaults;
    for (const QByteArray& bookmark : defaults.dataList(bookmarksKey).value_or(QByteArrayList())) {
        if (const auto folder = m_services.bookmarks.resolve(bookmark))
            vaults.push_back(*folder);
    }

    Operation operation(*this);
    store(m_vaults, std::move(vaults), &AppState::vaultsChanged);
    const auto current = defaults.string(currentKey);
    auto choice = std::ranges::find(m_vaults, current, [](const FileURL& vault) { return vault.path(); });
    if (choice == m_vaults.end())
        choice = m_vaults.begin();
    openBucket(choice == m_vaults.end() ? std::nullopt : std::optional(*choice));
}

void AppState::pickVault()
{
    const auto folder =
        m_services.panels.chooseFolder(u"Välj bucket"_s, u"Välj en mapp som ska fungera som din bucket."_s);
    if (folder)
        addVault(*folder);
}

void AppState::addVault(const FileURL& folder)
{
    Operation operation(*this);
    appendBookmark(folder);
    addToKV(folder);
    switchVault(folder);
}

void AppState::switchVault(const FileURL& bucket)
{
    Operation operation(*this);
    m_services.defaults.setString(currentKey, bucket.path());
    openBucket(bucket);
    reloadTree();
}

std::optional<FileURL> AppState::bucketHolding(const FileURL& file) const
{
    const auto holdsIt = [&file](const FileURL& vault) { return file.isBelow(vault); };
    if (m_vaultURL && holdsIt(*m_vaultURL))
        return m_vaultURL;
    const auto holder = std::ranges::find_if(m_vaults, holdsIt);
    return holder == m_vaults.end() ? std::nullopt : std::optional(*holder);
}

void AppState::openBucketOf(const FileURL& file)
{
    if (const auto bucket = bucketHolding(file); bucket != m_vaultURL)
        openBucket(bucket);
}

void AppState::removeBucket(const FileURL& bucket)
{
    Operation operation(*this);
    const FileURL removed = bucket; // may be an element of the list that is about to change
    std::vector<SyncedVaultEntry> entries = loadKVVaults();
    std::erase_if(entries,
                  [name = removed.lastPathComponent()](const auto& entry) { return entry.name == name; });
    saveKVVaults(entries);
    refreshPendingVaults();

    std::vector<FileURL> remaining = m_vaults;
    std::erase_if(remaining, isAt(removed));
    store(m_vaults, std::move(remaining), &AppState::vaultsChanged);
    rewriteBookmarks();

    VaultUIStates states = loadUIStates();
    if (states.remove(removed.path()) > 0)
        saveUIStates(states);

    if (!m_vaultURL || !isAt(removed)(*m_vaultURL))
        return;
    if (!m_vaults.empty()) {
        switchVault(m_vaults.front());
        return;
    }
    openBucket(std::nullopt);
    setSelectedFile(std::nullopt);
    setSelectedFolder(std::nullopt);
    m_services.defaults.remove(currentKey);
}

void AppState::openBucket(const std::optional<FileURL>& bucket)
{
    Operation operation(*this);
    store(m_vaultURL, bucket, &AppState::vaultURLChanged);
    m_tree.open(m_vaultURL);
    if (m_vaultURL)
        restoreSelection(*m_vaultURL);
}

void AppState::appendBookmark(const FileURL& folder)
{
    if (std::ranges::any_of(m_vaults, isAt(folder)))
        return;
    const auto bookmark = m_services.bookmarks.create(folder);
    if (!bookmark)
        return;
    QByteArrayList bookmarks = m_services.defaults.dataList(bookmarksKey).value_or(QByteArrayList());
    bookmarks.append(*bookmark);
    m_services.defaults.setDataList(bookmarksKey, bookmarks);
    std::vector<FileURL> vaults = m_vaults;
    vaults.push_back(folder);
    store(m_vaults, std::move(vaults), &AppState::vaultsChanged);
}

void AppState::rewriteBookmarks()
{
    QByteArrayList bookmarks;
    for (const FileURL& vault : m_vaults) {
        if (const auto bookmark = m_services.bookmarks.create(vault))
            bookmarks.append(*bookmark);
    }
    m_services.defaults.setDataList(bookmarksKey, bookmarks);
}

void AppState::setupKVSync()
{
    connect(&m_services.cloud, &CloudKeyValueStore::changedExternally, this, &AppState::refreshPendingVaults);
    m_services.cloud.synchronize();
    refreshPendingVaults();
}

std::vector<SyncedVaultEntry> AppState::loadKVVaults() const
{
    const auto json = m_services.cloud.data(kvsVaultsKey);
    return json ? syncedVaultEntriesFromJson(*json).value_or(std::vector<SyncedVaultEntry>())
                : std::vector<SyncedVaultEntry>();
}

void AppState::saveKVVaults(const std::vector<SyncedVaultEntry>& entries)
{
    m_services.cloud.setData(kvsVaultsKey, toJson(entries));
    m_services.cloud.synchronize();
}

void AppState::addToKV(const FileURL& folder)
{
    const QString name = folder.lastPathComponent();
    std::vector<SyncedVaultEntry> entries = loadKVVaults();
    if (std::ranges::find(entries, name, &SyncedVaultEntry::name) == entries.end()) {
        entries.push_back({QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper(), name});
        saveKVVaults(entries);
    }
    refreshPendingVaults(); // an entry that was there already may just have been linked
}

void AppState::refreshPendingVaults()
{
    std::vector<SyncedVaultEntry> pending = loadKVVaults();
    std::erase_if(pending, [this](const SyncedVaultEntry& entry) {
        return std::ranges::find(m_vaults, entry.name, &FileURL::lastPathComponent) != m_vaults.end();
    });
    store(m_pendingVaults, std::move(pending), &AppState::pendingVaultsChanged);
}

} // namespace wendlore
