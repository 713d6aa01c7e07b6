#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

#include <optional>

namespace wendlore {

/// Per-device settings by key. Every set is written at once; a value of another type, or unreadable, counts
/// as missing.
class UserDefaults
{
public:
    virtual ~UserDefaults() = default;

    [[nodiscard]] virtual std::optional<QByteArray> data(const QString& key) const = 0;
    [[nodiscard]] virtual std::optional<QByteArrayList> dataList(const QString& key) const = 0;
    [[nodiscard]] virtual std::optional<QString> string(const QString& key) const = 0;
    /// The number under `key`, 0 when there is none.
    [[nodiscard]] virtual double number(const QString& key) const = 0;

    virtual void setData(const QString& key, const QByteArray& value) = 0;
    virtual void setDataList(const QString& key, const QByteArrayList& values) = 0;
    virtual void setString(const QString& key, const QString& value) = 0;
    virtual void setNumber(const QString& key, double value) = 0;
    virtual void remove(const QString& key) = 0;
};

} // namespace wendlore
