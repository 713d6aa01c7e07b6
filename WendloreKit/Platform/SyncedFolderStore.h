#pragma once

#include "Platform/BucketChanges.h"

#include "State/CloudKeyValueStore.h"
#include "Vault/FileURL.h"

#include <QFileSystemWatcher>
#include <QSet>

namespace wendlore {

class UserDefaults;

/// The shared list of buckets in a folder that any sync program may carry between devices. Every device
/// writes one file of its own for each key ("<key>.<device>.json") and reads everybody's, so no two devices
/// ever write the same file. Values are JSON arrays of `SyncedVaultEntry`; a write counts as the additions
/// and removals since the last read. Files that are half written, or copies that a sync program made, are
/// ignored and logged.
class SyncedFolderStore final : public CloudKeyValueStore
{
    Q_OBJECT

public:
    /// `device` is made of hexadecimal digits. Processes of the same device keep out of each other's way by
    /// `lockFile`, which lies outside the folder.
    SyncedFolderStore(FileURL folder, QString device, FileURL lockFile);

    /// The folder that the settings name ("wendloreCloudFolder", below the user's home unless absolute), or
    /// `standard`.
    [[nodiscard]] static FileURL chosenFolder(const UserDefaults& defaults, const FileURL& standard);
    /// A name that tells this device, and the settings in `configDirectory`, from all others.
    [[nodiscard]] static QString thisDevice(const FileURL& configDirectory);

    [[nodiscard]] std::optional<QByteArray> data(const QString& key) override;
    void setData(const QString& key, const QByteArray& value) override;
    void synchronize() override;
    void moveTo(const FileURL& folder) override;

private:
    [[nodiscard]] FileURL ownFile(const QString& key) const;
    /// What holds of the changes in all devices' files, whose next change will be noticed; nothing when
    /// there is no file.
    [[nodiscard]] std::optional<BucketChanges> readAll(const QString& key);
    /// The changes in one device's file: as it is, or was when it last could be read.
    [[nodiscard]] std::optional<BucketChanges> read(const FileURL& file, const QString& device);
    /// The folder tells of files that come, go and are replaced; a file, of being written in place.
    void watch(const FileURL& place);
    void ignore(const FileURL& file, const char* reason);

    FileURL m_folder;
    QString m_device;
    FileURL m_lockFile;
    QFileSystemWatcher m_watcher;
    QMap<QString, std::vector<SyncedVaultEntry>> m_seen; ///< by key, as last read or written
    QMap<QByteArray, BucketChanges> m_valid;             ///< by path, as last read
    QSet<QByteArray> m_ignored;
};

} // namespace wendlore
