#include "Platform/SyncedFolderStore.h"

#include "Platform/FileLock.h"

#include "State/UserDefaults.h"
#include "Vault/AtomicFile.h"
#include "Vault/FolderListing.h"
#include "Vault/PrivateDirectory.h"
#include "Vault/ReadFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QSysInfo>

#include <algorithm>
#include <cerrno>
#include <cstring>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

Q_LOGGING_CATEGORY(cloudLog, "wendlore.cloud")

} // namespace

SyncedFolderStore::SyncedFolderStore(FileURL folder, QString device, FileURL lockFile)
    : m_folder(std::move(folder))
    , m_device(std::move(device))
    , m_lockFile(std::move(lockFile))
{
    if (!makePrivateDirectory(m_folder))
        qCWarning(cloudLog) << "cannot make" << m_folder.path() << std::strerror(errno);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &SyncedFolderStore::synchronize);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &SyncedFolderStore::synchronize);
}

FileURL SyncedFolderStore::chosenFolder(const UserDefaults& defaults, const FileURL& standard)
{
    QString chosen = defaults.string(u"wendloreCloudFolder"_s).value_or(QString());
    if (chosen.isEmpty())
        return standard;
    if (chosen.startsWith(u"~/"_s))
        chosen.remove(0, 2);
    return FileURL::directory(QDir::home().absoluteFilePath(chosen));
}

QString SyncedFolderStore::thisDevice(const FileURL& configDirectory)
{
    QByteArray machine = QSysInfo::machineUniqueId();
    if (machine.isEmpty())
        machine = QSysInfo::machineHostName().toUtf8();
    const QByteArray text = "wendlores:" + machine + ':' + configDirectory.bytes();
    const QByteArray hash = QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex();
    return QString::fromLatin1(hash.first(32));
}

std::optional<QByteArray> SyncedFolderStore::data(const QString& key)
{
    const std::optional<BucketChanges> all = readAll(key);
    m_seen[key] = entries(all.value_or(BucketChanges()));
    return all ? std::optional(toJson(m_seen[key])) : std::nullopt;
}

void SyncedFolderStore::setData(const QString& key, const QByteArray& value)
{
    const auto wanted = syncedVaultEntriesFromJson(value);
    if (!wanted) {
        qCWarning(cloudLog) << "not a list of buckets:" << key;
        return;
    }
    if (!makePrivateDirectory(m_folder) || !makePrivateDirectory(m_lockFile.deletingLastPathComponent()))
        qCWarning(cloudLog) << "cannot make" << m_folder.path() << std::strerror(errno);
    const FileLock lock(m_lockFile);
    if (!lock.isHeld())
        qCWarning(cloudLog) << "cannot lock" << m_lockFile.path() << std::strerror(errno);

    BucketChanges all = readAll(key).value_or(BucketChanges());
    BucketChanges own = read(ownFile(key), m_device).value_or(BucketChanges());
    record(own, all, m_seen[key], *wanted);
    const WriteResult result = AtomicFile::write(ownFile(key), toJson(own, m_device));
    if (!result.succeeded()) {
        qCWarning(cloudLog) << "cannot write" << ownFile(key).path() << result.error;
        return;
    }
    m_valid[ownFile(key).bytes()] = own;
    merge(all, own);
    m_seen[key] = entries(all);
}

void SyncedFolderStore::synchronize()
{
    bool isChanged = false;
    for (auto seen = m_seen.cbegin(); seen != m_seen.cend(); ++seen)
        isChanged |= entries(readAll(seen.key()).value_or(BucketChanges())) != seen.value();
    if (isChanged)
        Q_EMIT changedExternally();
}

void SyncedFolderStore::moveTo(const FileURL& folder)
{
    if (folder == m_folder)
        return;
    QMap<QString, std::vector<SyncedVaultEntry>> carried;
    for (auto seen = m_seen.cbegin(); seen != m_seen.cend(); ++seen)
        carried[seen.key()] = entries(readAll(seen.key()).value_or(BucketChanges()));
    m_watcher.removePaths(m_watcher.files() + m_watcher.directories());
    m_folder = folder;
    m_valid.clear();
    m_ignored.clear();
    for (auto mine = carried.cbegin(); mine != carried.cend(); ++mine) {
        m_seen[mine.key()] = entries(readAll(mine.key()).value_or(BucketChanges()));
        std::vector<SyncedVaultEntry> all = m_seen[mine.key()];
        for (const SyncedVaultEntry& entry : *mine) {
            if (std::ranges::find(all, entry.name, &SyncedVaultEntry::name) == all.end())
                all.push_back(entry);
        }
        setData(mine.key(), toJson(all));
    }
    Q_EMIT changedExternally();
}

FileURL SyncedFolderStore::ownFile(const QString& key) const
{
    return m_folder.appending(key + u'.' + m_device + u".json"_s);
}

std::optional<BucketChanges> SyncedFolderStore::readAll(const QString& key)
{
    static const QRegularExpression devicePattern(u"^\\.([0-9a-f]+)\\.json$"_s);
    watch(m_folder);
    std::optional<BucketChanges> all;
    for (const FolderEntry& entry : visibleEntries(m_folder, FollowLink::Yes)) {
        const QString name = QFile::decodeName(entry.name);
        if (!name.startsWith(key))
            continue;
        const FileURL file = m_folder.appendingBytes(entry.name, false);
        const auto match = devicePattern.match(name.mid(key.size()));
        if (!match.hasMatch()) {
            ignore(file, "which no device writes");
            continue;
        }
        watch(file);
        if (const auto changes = read(file, match.captured(1))) {
            if (!all)
                all.emplace();
            merge(*all, *changes);
        }
    }
    return all;
}

std::optional<BucketChanges> SyncedFolderStore::read(const FileURL& file, const QString& device)
{
    const auto bytes = readFile(file);
    const auto changes = bytes ? bucketChangesFromJson(*bytes, device) : std::nullopt;
    if (changes) {
        m_valid[file.bytes()] = *changes;
        m_ignored.remove(file.bytes());
        return changes;
    }
    if (bytes)
        ignore(file, "which cannot be understood");
    const auto earlier = m_valid.constFind(file.bytes());
    return earlier != m_valid.cend() ? std::optional(*earlier) : std::nullopt;
}

void SyncedFolderStore::watch(const FileURL& place)
{
    const QString path = QFile::decodeName(place.bytes());
    if (!m_watcher.files().contains(path) && !m_watcher.directories().contains(path))
        m_watcher.addPath(path);
}

void SyncedFolderStore::ignore(const FileURL& file, const char* reason)
{
    if (m_ignored.contains(file.bytes()))
        return;
    m_ignored.insert(file.bytes());
    qCWarning(cloudLog) << "ignoring" << file.path() << reason;
}

} // namespace wendlore
