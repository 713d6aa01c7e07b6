#pragma once

#include <QWidget>

class QMenu;

namespace wendlore {

class AppState;
class LabelButton;
struct SyncedVaultEntry;

/// Shows the open bucket's name. Its menu changes to another bucket, links one of another device, adds one,
/// and leads to the list of all.
class BucketSwitcher final : public QWidget
{
    Q_OBJECT

public:
    explicit BucketSwitcher(AppState& state, QWidget* parent = nullptr);

    /// Opens the sheet that leads to the choice of a bucket's folder.
    void showInstructions();
    /// Opens the sheet that links a bucket of another device.
    void showPendingVault(const SyncedVaultEntry& entry);
    /// Opens the sheet with the list of buckets.
    void showManageBuckets();

private:
    void showBucket();
    void fillMenu();
    void addBuckets();
    void addPendingVaults();

    AppState& m_state;
    LabelButton* m_button;
    QMenu* m_menu;
};

} // namespace wendlore
