#pragma once

#include <QWidget>

class QMenu;

namespace wendlore {

class AppState;
class LabelButton;

/// Shows the open bucket's name and lets the user change to another one or add one.
class BucketSwitcher final : public QWidget
{
    Q_OBJECT

public:
    explicit BucketSwitcher(AppState& state, QWidget* parent = nullptr);

private:
    void showBucket();
    void fillMenu();

    AppState& m_state;
    LabelButton* m_button;
    QMenu* m_menu;
};

} // namespace wendlore
