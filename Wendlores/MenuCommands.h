#pragma once

#include "Wendlores/EditCommands.h"

#include <QObject>

#include <vector>

class QAction;
class QMainWindow;
class QMenu;

namespace wendlore {

class AppState;

/// The main window's menu bar. A command that cannot be carried out now is disabled.
class MenuCommands final : public QObject
{
    Q_OBJECT

public:
    MenuCommands(AppState& state, QMainWindow& window);

private:
    void addFileMenu();
    void addEditMenu();
    void addViewMenu();
    void addAppearanceMenu(QMenu& menu);
    QMenu* addMenu(const QString& title);
    void showWhatIsPossible();

    AppState& m_state;
    QMainWindow& m_window;
    EditCommands m_edit;
    std::vector<QAction*> m_needBucket;
    std::vector<QAction*> m_needFile;
};

} // namespace wendlore
