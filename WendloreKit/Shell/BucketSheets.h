#pragma once

#include "Look/Sheet.h"

namespace wendlore {

class AppState;
struct SyncedVaultEntry;

/// Says what a bucket is, and leads to the choice of its folder.
class BucketInstructionsSheet final : public Sheet
{
    Q_OBJECT

public:
    BucketInstructionsSheet(AppState& state, QWidget* parent);
};

/// Links a bucket that another device has to its folder on this one.
class PendingVaultSheet final : public Sheet
{
    Q_OBJECT

public:
    PendingVaultSheet(AppState& state, const SyncedVaultEntry& entry, QWidget* parent);
};

} // namespace wendlore
