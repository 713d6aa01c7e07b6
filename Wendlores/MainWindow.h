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
class NoticeBar;
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
    /// Where the program tells what it was asked for a while ago.
    [[nodiscard]] NoticeBar& notice() const { return *m_notice; }
    /// Shows what other windows the program has, in the row of tabs and in the window menu.
    void setOtherWindows(const QList<QWidget*>& windows);
    /// Gives the keyboard to the tree, where a stray key changes nothing, or to the invitation to open a
    /// bucket.
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
    NoticeBar* m_notice;
    WindowClosing m_closing;
};

} // namespace wendlore
