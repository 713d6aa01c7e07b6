#pragma once

#include "State/SyncedVaultEntry.h"

#include <QMap>

namespace wendlore {

/// The last thing that happened to one bucket of the list that devices share.
struct BucketChange final
{
    qint64 time = 0;           ///< logical: above every time that the device knew of
    std::optional<QString> id; ///< the added entry's; absent when the bucket was removed

    friend bool operator==(const BucketChange&, const BucketChange&) = default;
};

/// Changes by bucket name. Of two changes to one bucket the later one holds; of two at the same time an
/// addition, so that devices that see the same changes in any order agree.
using BucketChanges = QMap<QString, BucketChange>;

/// Reads what `device` wrote; nothing when it is anything else.
[[nodiscard]] std::optional<BucketChanges> bucketChangesFromJson(const QByteArray& json,
                                                                 const QString& device);
[[nodiscard]] QByteArray toJson(const BucketChanges& changes, const QString& device);

/// Takes into `all` what holds of `more`.
void merge(BucketChanges& all, const BucketChanges& more);

/// The buckets that were added and not removed, in the order of their addition.
[[nodiscard]] std::vector<SyncedVaultEntry> entries(const BucketChanges& changes);

/// Adds to the device's `own` changes that a list read as `seen` was written as `wanted`, while `all` holds.
/// What another device has changed meanwhile stays; what no longer holds is forgotten.
void record(BucketChanges& own, const BucketChanges& all, const std::vector<SyncedVaultEntry>& seen,
            const std::vector<SyncedVaultEntry>& wanted);

} // namespace wendlore
