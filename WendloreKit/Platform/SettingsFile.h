#pragma once

#include "State/UserDefaults.h"
#include "Vault/FileURL.h"

#include <QJsonObject>

#include <optional>

#include <sys/types.h>

namespace wendlore {

/// Settings in one JSON file that a person can read. Every set reads the file, changes one key and writes it
/// whole, under a lock, so that two processes lose nothing of each other; every read sees what another
/// process wrote. A file that is no JSON object is put aside under a new name, never overwritten.
class SettingsFile final : public UserDefaults
{
public:
    /// Uses `file`, which need not exist, nor its folder.
    explicit SettingsFile(FileURL file);

    [[nodiscard]] std::optional<QByteArray> data(const QString& key) const override;
    [[nodiscard]] std::optional<QByteArrayList> dataList(const QString& key) const override;
    [[nodiscard]] std::optional<QString> string(const QString& key) const override;
    [[nodiscard]] double number(const QString& key) const override;

    void setData(const QString& key, const QByteArray& value) override;
    void setDataList(const QString& key, const QByteArrayList& values) override;
    void setString(const QString& key, const QString& value) override;
    void setNumber(const QString& key, double value) override;
    void remove(const QString& key) override;

private:
    /// What tells one version of the file from another.
    struct Version final
    {
        ino_t inode = 0;
        qint64 size = 0;
        qint64 seconds = 0;
        qint64 nanoseconds = 0;

        friend bool operator==(const Version&, const Version&) = default;
    };
    enum class Content { Missing, Broken, Valid };

    [[nodiscard]] QJsonValue value(const QString& key) const;
    /// Stores `value`, or removes the key when it is undefined.
    void set(const QString& key, const QJsonValue& value);
    [[nodiscard]] std::optional<Version> versionOnDisk() const;
    /// Makes `m_values` what the file holds now.
    Content refresh() const;
    /// Gives the file a new name; false when that fails.
    [[nodiscard]] bool putAside() const;

    FileURL m_file;
    mutable QJsonObject m_values;
    mutable std::optional<Version> m_version;
};

} // namespace wendlore
