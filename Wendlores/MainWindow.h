#pragma once

#include "Platform/UndoStackRegistrar.h"

#include <QMainWindow>
#include <QUndoStack>

namespace wendlore {

class AppState;
class ContentView;
class SidebarView;

/// The program's main window. Closing it first waits for the keys that were typed last, and writes them.
class MainWindow final : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(AppState& state, QWidget* parent = nullptr);

    [[nodiscard]] ContentView& content() const { return *m_content; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    enum class Closing { notAsked, waiting, settled };

    void restoreGeometryAndSplit();
    void keepGeometryAndSplit() const;
    void connectSidebar(SidebarView& sidebar);
    void showTitle();

    AppState& m_state;
    /// Moves in the sidebar, to be taken back there.
    QUndoStack m_moves;
    UndoStackRegistrar m_undo{m_moves};
    ContentView* m_content;
    Closing m_closing = Closing::notAsked;
};

} // namespace wendlore
