#include "Platform/BucketChanges.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <tuple>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr auto deviceKey = "device"_L1;
constexpr auto changesKey = "changes"_L1;
constexpr auto nameKey = "name"_L1;
constexpr auto timeKey = "time"_L1;
constexpr auto idKey = "id"_L1;
/// JSON numbers are exact up to here.
constexpr qint64 latestTime = qint64(1) << 52;

bool isNewer(const BucketChange& left, const BucketChange& right)
{
    return std::tie(left.time, left.id) > std::tie(right.time, right.id);
}

bool names(const std::vector<SyncedVaultEntry>& entries, const QString& name)
{
    return std::ranges::find(entries, name, &SyncedVaultEntry::name) != entries.end();
}

} // namespace

std::optional<BucketChanges> bucketChangesFromJson(const QByteArray& json, const QString& device)
{
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    if (object[deviceKey].toString() != device || !object[changesKey].isArray())
        return std::nullopt;
    BucketChanges changes;
    for (const QJsonValue& element : object[changesKey].toArray()) {
        const QJsonValue name = element[nameKey];
        const QJsonValue id = element[idKey];
        const qint64 time = element[timeKey].toInteger();
        if (!name.isString() || time < 1 || time > latestTime || !(id.isString() || id.isUndefined()))
            return std::nullopt;
        changes[name.toString()] = {time, id.isString() ? std::optional(id.toString()) : std::nullopt};
    }
    return changes;
}

QByteArray toJson(const BucketChanges& changes, const QString& device)
{
    QJsonArray array;
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        QJsonObject element{{nameKey, change.key()}, {timeKey, change->time}};
        if (change->id)
            element[idKey] = *change->id;
        array.append(element);
    }
    return QJsonDocument(QJsonObject{{deviceKey, device}, {changesKey, array}}).toJson();
}

void merge(BucketChanges& all, const BucketChanges& more)
{
    for (auto change = more.begin(); change != more.end(); ++change) {
        if (isNewer(*change, all.value(change.key())))
            all[change.key()] = *change;
    }
}

std::vector<SyncedVaultEntry> entries(const BucketChanges& changes)
{
    std::vector<std::pair<qint64, SyncedVaultEntry>> added;
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        if (change->id)
            added.push_back({change->time, {*change->id, change.key()}});
    }
    std::ranges::stable_sort(added, {}, [](const auto& entry) { return entry.first; });
    std::vector<SyncedVaultEntry> list;
    for (auto& [time, entry] : added)
        list.push_back(std::move(entry));
    return list;
}

void record(BucketChanges& own, const BucketChanges& all, const std::vector<SyncedVaultEntry>& seen,
            const std::vector<SyncedVaultEntry>& wanted)
{
    qint64 time = 0;
    for (const BucketChange& change : all)
        time = std::max(time, change.time);
    const auto nextTime = [&time] { return time = std::min(time + 1, latestTime); };

    own.removeIf([&all](const auto& change) { return all.value(change.key()) != change.value(); });
    for (const SyncedVaultEntry& entry : seen) {
        if (!names(wanted, entry.name) && all.value(entry.name).id)
            own[entry.name] = {nextTime(), std::nullopt};
    }
    for (const SyncedVaultEntry& entry : wanted) {
        if (!names(seen, entry.name) && !all.value(entry.name).id)
            own[entry.name] = {nextTime(), entry.id};
    }
}

} // namespace wendlore
