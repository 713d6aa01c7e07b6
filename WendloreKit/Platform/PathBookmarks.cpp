#include "Platform/PathBookmarks.h"

#include "Platform/FolderIdentity.h"

#include "Vault/FolderListing.h"

#include <QCborMap>

#include <deque>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr auto pathKey = "path"_L1;
constexpr auto deviceKey = "device"_L1;
constexpr auto inodeKey = "inode"_L1;
constexpr auto bornKey = "born"_L1;

/// Looks for a folder by its identity around the place where it was, nearest places first.
class FolderSearch final
{
public:
    explicit FolderSearch(const FolderIdentity& wanted)
        : m_wanted(wanted)
    {}

    /// Searches below the nearest folder above `lost` that is still there, then below the next one up.
    std::optional<FileURL> around(const FileURL& lost)
    {
        FileURL searched;
        for (FileURL top = lost.deletingLastPathComponent(); top.bytes() != "/" && m_left > 0;
             top = top.deletingLastPathComponent()) {
            const auto identity = folderIdentity(top);
            if (!identity)
                continue;
            if (identity->device != m_wanted.device)
                return std::nullopt;
            if (auto found = below(top, searched))
                return found;
            searched = top;
        }
        return std::nullopt;
    }

private:
    /// Searches breadth first, leaving out what lies below `searched`.
    std::optional<FileURL> below(const FileURL& top, const FileURL& searched)
    {
        std::deque<FileURL> waiting{top};
        for (; !waiting.empty() && m_left > 0; waiting.pop_front(), --m_left) {
            for (const FolderEntry& entry : visibleEntries(waiting.front(), FollowLink::No)) {
                if (!entry.isDirectory)
                    continue;
                const FileURL folder = waiting.front().appendingBytes(entry.name, true);
                if (entry.inode == quint64(m_wanted.inode) && folderIdentity(folder) == m_wanted)
                    return folder;
                if (folder != searched)
                    waiting.push_back(folder);
            }
        }
        return std::nullopt;
    }

    FolderIdentity m_wanted;
    int m_left = PathBookmarks::searchLimit;
};

} // namespace

std::optional<QByteArray> PathBookmarks::create(const FileURL& folder)
{
    const auto identity = folderIdentity(folder);
    if (!identity)
        return std::nullopt;
    return QCborMap{{pathKey, folder.bytes()},
                    {deviceKey, identity->device},
                    {inodeKey, identity->inode},
                    {bornKey, identity->born}}
        .toCborValue()
        .toCbor();
}

std::optional<FileURL> PathBookmarks::resolve(const QByteArray& bookmark)
{
    QCborParserError error;
    const QCborMap map = QCborValue::fromCbor(bookmark, &error).toMap();
    const QByteArray path = map[pathKey].toByteArray();
    if (error.error != QCborError::NoError || !path.startsWith('/') || path.contains('\0'))
        return std::nullopt;
    const auto folder = FileURL::fromBytes(path, true);
    if (folderIdentity(folder))
        return folder;
    return FolderSearch({map[deviceKey].toInteger(), map[inodeKey].toInteger(), map[bornKey].toInteger()})
        .around(folder);
}

} // namespace wendlore
