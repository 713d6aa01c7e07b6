#include "State/SyncedVaultEntry.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace wendlore {

std::optional<std::vector<SyncedVaultEntry>> syncedVaultEntriesFromJson(const QByteArray& json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isArray())
        return std::nullopt;
    std::vector<SyncedVaultEntry> entries;
    for (const QJsonValue& element : document.array()) {
        const QJsonValue id = element["id"_L1];
        const QJsonValue name = element["name"_L1];
        if (!id.isString() || !name.isString())
            return std::nullopt;
        entries.push_back({id.toString(), name.toString()});
    }
    return entries;
}

QByteArray toJson(const std::vector<SyncedVaultEntry>& entries)
{
    QJsonArray array;
    for (const SyncedVaultEntry& entry : entries)
        array.append(QJsonObject{{"id"_L1, entry.id}, {"name"_L1, entry.name}});
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

} // namespace wendlore
