#pragma once

#include "Wendlores/EditCommands.h"

#include <QKeySequence>
#include <QList>
#include <QObject>

#include <vector>

class QAction;
class QActionGroup;
class QMainWindow;
class QMenu;

namespace wendlore {

class AppState;

/// A window's menu bar. A command that cannot be carried out now is disabled.
class MenuCommands final : public QObject
{
    Q_OBJECT

public:
    /// The main window has the commands for the sidebar and for the look of the program as well.
    enum class Scene { main, file };

    /// New items and buckets are the workspace's, which the main window shows; the commands for a text and
    /// its size go to what the menu's own window shows.
    MenuCommands(AppState& workspace, AppState& shown, QMainWindow& window, Scene scene);

    /// Lists the program's windows in the window menu, the main window first.
    void setWindows(const QList<QWidget*>& windows);
    [[nodiscard]] EditCommands& edit() { return m_edit; }
    /// Where further commands about the program itself go.
    [[nodiscard]] QMenu& helpMenu() const { return *m_help; }

Q_SIGNALS:
    void quitRequested();
    /// A command changed what the main window shows.
    void workspaceRequested();
    void bucketSearchRequested();
    void sidebarToggled();
    void otherPaneRequested();
    void tabBarToggled();

private:
    void addFileMenu();
    void addWorkspaceCommands(QMenu& menu);
    void addEditMenu();
    void addViewMenu();
    void addZoomCommands(QMenu& menu);
    void addAppearanceMenu(QMenu& menu);
    void addWindowMenu();
    void addHelpMenu();
    QMenu* addMenu(const QString& title);
    void showWhatIsPossible();

    AppState& m_workspace;
    AppState& m_shown;
    QMainWindow& m_window;
    Scene m_scene;
    EditCommands m_edit;
    QMenu* m_windows = nullptr;
    QActionGroup* m_windowEntries = nullptr;
    QMenu* m_help = nullptr;
    std::vector<QAction*> m_needBucket;
    std::vector<QAction*> m_needFile;
};

} // namespace wendlore
