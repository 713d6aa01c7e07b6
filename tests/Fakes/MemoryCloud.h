#pragma once

#include "State/CloudKeyValueStore.h"
#include "Vault/FileURL.h"

#include <QMap>

namespace wendlore {

/// Cloud values that live in memory, for one test.
class MemoryCloud final : public CloudKeyValueStore
{
public:
    [[nodiscard]] std::optional<QByteArray> data(const QString& key) override
    {
        return values.contains(key) ? std::optional(values[key]) : std::nullopt;
    }
    void setData(const QString& key, const QByteArray& value) override { values[key] = value; }
    void synchronize() override { ++synchronizations; }
    void moveTo(const FileURL& chosen) override { folder = chosen; }

    /// Lets another device store `value`.
    void arrive(const QString& key, const QByteArray& value)
    {
        values[key] = value;
        Q_EMIT changedExternally();
    }

    QMap<QString, QByteArray> values;
    int synchronizations = 0;
    std::optional<FileURL> folder;
};

} // namespace wendlore
