#include "State/AppState.h"

#include "State/FolderBookmarks.h"
#include "State/Panels.h"
#include "State/UserDefaults.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

const QString bookmarksKey = u"vaultBookmarks"_s;
/// Where an older version kept its only bucket.
const QString legacyBookmarkKey = u"vaultBookmark"_s;
const QString currentKey = u"currentVaultPath"_s;

auto isAt(const FileURL& folder)
{
    return [&folder](const FileURL& vault) { return vault.bytes() == folder.bytes(); };
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
    switchVault(folder);
}

void AppState::switchVault(const FileURL& bucket)
{
    m_services.defaults.setString(currentKey, bucket.path());
    openBucket(bucket);
}

void AppState::removeBucket(const FileURL& bucket)
{
    Operation operation(*this);
    const FileURL removed = bucket; // may be an element of the list that is about to change
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
    reloadTree();
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

} // namespace wendlore
