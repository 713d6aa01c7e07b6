#pragma once

#include "State/UserDefaults.h"

#include <QMap>

#include <variant>

namespace wendlore {

/// Settings that live in memory, for one test.
class MemoryDefaults final : public UserDefaults
{
public:
    using Value = std::variant<QByteArray, QByteArrayList, QString, double>;

    [[nodiscard]] std::optional<QByteArray> data(const QString& key) const override
    {
        return get<QByteArray>(key);
    }
    [[nodiscard]] std::optional<QByteArrayList> dataList(const QString& key) const override
    {
        return get<QByteArrayList>(key);
    }
    [[nodiscard]] std::optional<QString> string(const QString& key) const override
    {
        return get<QString>(key);
    }
    [[nodiscard]] double number(const QString& key) const override { return get<double>(key).value_or(0); }

    void setData(const QString& key, const QByteArray& value) override { values[key] = value; }
    void setDataList(const QString& key, const QByteArrayList& list) override { values[key] = list; }
    void setString(const QString& key, const QString& value) override { values[key] = value; }
    void setNumber(const QString& key, double value) override { values[key] = value; }
    void remove(const QString& key) override { values.remove(key); }

    QMap<QString, Value> values;

private:
    template <typename Type>
    [[nodiscard]] std::optional<Type> get(const QString& key) const
    {
        const auto found = values.find(key);
        if (found == values.end() || !std::holds_alternative<Type>(*found))
            return std::nullopt;
        return std::get<Type>(*found);
    }
};

} // namespace wendlore
