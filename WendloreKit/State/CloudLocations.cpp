#include "State/CloudLocations.h"

#include "Vault/Collation.h"
#include "Vault/FolderListing.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>

#include <dirent.h>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

struct Provider final
{
    QString prefix;
    QString name;
    int rank = 0;
};

bool canBeListed(const FileURL& folder)
{
    DIR* directory = ::opendir(folder.bytes().constData());
    return directory && ::closedir(directory) == 0;
}

/// Providers keep copies of a folder that they gave up under its name and the time: "X (2024-03-01 10.12)".
bool isStaleCopy(const QString& folderName)
{
    static const QRegularExpression date(u"\\(\\d{4}-\\d{2}-\\d{2}"_s);
    return folderName.contains(date);
}

void addIfListed(std::vector<CloudLocation>& locations, const FileURL& folder,
                 const CloudLocations::Label& label)
{
    if (canBeListed(folder))
        locations.push_back({folder.path(), label.name, folder, label.rank});
}

} // namespace

std::optional<CloudLocations::Label> CloudLocations::label(const QString& folderName)
{
    static const Provider providers[] = {{u"GoogleDrive-"_s, u"Google Drive"_s, 0},
                                         {u"OneDrive-"_s, u"OneDrive"_s, 1},
                                         {u"ProtonDrive-"_s, u"Proton Drive"_s, 2},
                                         {u"Box-"_s, u"Box"_s, 2}};
    const auto provider = std::ranges::find_if(
        providers, [&](const Provider& candidate) { return folderName.startsWith(candidate.prefix); });
    if (provider == std::end(providers))
        return std::nullopt;
    QString account = folderName.mid(provider->prefix.size());
    const QString suffix = u"-folder"_s;
    if (account.endsWith(suffix))
        account.chop(suffix.size());
    return Label{account.isEmpty() ? provider->name : provider->name + u" · "_s + account, provider->rank};
}

std::vector<CloudLocation> CloudLocations::available(const FileURL& home)
{
    std::vector<CloudLocation> locations;
    const FileURL storage = home.appending(u"Library/CloudStorage"_s, true);
    for (const FolderEntry& entry : visibleEntries(storage, FollowLink::Yes)) {
        const QString name = QFile::decodeName(entry.name);
        const auto shown = label(name);
        if (shown && !isStaleCopy(name))
            addIfListed(locations, storage.appendingBytes(entry.name, true), *shown);
    }
    addIfListed(locations, home.appending(u"Dropbox"_s, true), {u"Dropbox"_s, 3});
    addIfListed(locations, home.appending(u"Library/Mobile Documents/com~apple~CloudDocs"_s, true),
                {u"iCloud Drive"_s, 4});

    const NameOrder order;
    std::ranges::stable_sort(locations, [&order](const CloudLocation& left, const CloudLocation& right) {
        if (left.rank != right.rank)
            return left.rank < right.rank;
        return order.compare(left.name.toUtf8(), right.name.toUtf8()) < 0;
    });
    return locations;
}

std::vector<CloudLocation> CloudLocations::available()
{
    return available(FileURL::fromBytes(QFile::encodeName(QDir::homePath()), true));
}

} // namespace wendlore
