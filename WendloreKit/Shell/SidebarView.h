#pragma once

#include <QWidget>

#include <memory>

namespace wendlore {

class AppState;
class FileTreeView;
class IconButton;
class ScheduledTask;

/// The left column: the bucket switcher, the row of actions, the open bucket's tree, and at the bottom where
/// to report things and which build this is.
class SidebarView final : public QWidget
{
    Q_OBJECT

public:
    explicit SidebarView(AppState& state, QWidget* parent = nullptr);
    ~SidebarView() override;

    [[nodiscard]] FileTreeView& tree() const { return *m_tree; }
    /// Reads the tree again, then walks the whole bucket in the background, which makes cloud services bring
    /// it up to date, and reads the tree once more.
    void refresh();

private:
    [[nodiscard]] QWidget* makeActions();
    [[nodiscard]] QWidget* makeFooter();
    void showWhatIsPossible();

    AppState& m_state;
    IconButton* m_newNote = nullptr;
    IconButton* m_newFolder = nullptr;
    IconButton* m_refresh = nullptr;
    FileTreeView* m_tree;
    std::unique_ptr<ScheduledTask> m_walk;
};

} // namespace wendlore
