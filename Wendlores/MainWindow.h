#pragma once

#include "Platform/UndoStackRegistrar.h"
#include "Shell/WindowClosing.h"

#include <QMainWindow>
#include <QUndoStack>

#include <memory>

namespace wendlore {

class AppState;
class ContentView;
class EditorSession;
class MenuCommands;
class SidebarView;
class WindowTabBar;

/// The program's main window. Closing it first waits for the keys that were typed last, and writes them.
class MainWindow final : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(AppState& state, QWidget* parent = nullptr);

    [[nodiscard]] ContentView& content() const { return *m_content; }
    [[nodiscard]] MenuCommands& menus() const { return *m_menus; }
    [[nodiscard]] EditorSession& session() const;
    /// Shows what other windows the program has, in the row of tabs and in the window menu.
    void setOtherWindows(const QList<QWidget*>& windows);
    /// Shows the window, also after it was closed, and gives it the keyboard.
    void bringForward();
    /// Gives the keyboard to the note, or to the tree while nothing is shown beside it.
    void takeFocus();

Q_SIGNALS:
    void quitRequested();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildContent();
    void restoreLayout();
    void keepLayout() const;
    void toggleSidebar();
    void toggleTabBar();
    /// From the sidebar to what is shown beside it, and from there to the sidebar.
    void goToOtherPane();
    void searchBucket();
    void connectSidebar(SidebarView& sidebar);
    void showTitle();

    AppState& m_state;
    /// Moves in the sidebar, to be taken back there.
    QUndoStack m_moves;
    UndoStackRegistrar m_undo{m_moves};
    ContentView* m_content;
    MenuCommands* m_menus;
    WindowTabBar* m_tabs;
    WindowClosing m_closing;
};

} // namespace wendlore
