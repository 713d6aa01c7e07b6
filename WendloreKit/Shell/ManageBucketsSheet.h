#pragma once

#include "Look/Sheet.h"
#include "State/SyncedVaultEntry.h"

#include <QString>

class QLabel;
class QScrollArea;

namespace wendlore {

class AppState;
class FileURL;

/// The list of buckets, each with a button that takes it off the list, and those of other devices.
class ManageBucketsSheet final : public Sheet
{
    Q_OBJECT

public:
    ManageBucketsSheet(AppState& state, QWidget* parent);

Q_SIGNALS:
    /// The user wants to add a bucket.
    void addRequested();
    /// The user wants to link a bucket of another device.
    void linkRequested(const wendlore::SyncedVaultEntry& entry);

private:
    void addCloudFolder();
    void chooseCloudFolder();
    void showCloudFolder();
    void showLists();
    [[nodiscard]] QWidget* makeLists();
    [[nodiscard]] QWidget* makeBucketRow(const FileURL& bucket, QWidget* parent);
    [[nodiscard]] QWidget* makePendingRow(const SyncedVaultEntry& entry, QWidget* parent);

    AppState& m_state;
    QScrollArea* m_lists;
    QLabel* m_cloudFolder = nullptr;
};

} // namespace wendlore
