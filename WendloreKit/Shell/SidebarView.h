#pragma once

#include <QWidget>

#include <memory>

class QStackedWidget;

namespace wendlore {

class AppState;
class FileTreeView;
class FileURL;
class IconButton;
class ScheduledTask;
class SearchView;

/// The left column: the bucket switcher, the row of actions, the open bucket's tree or the search through it,
/// and at the bottom where to report things and which build this is.
class SidebarView final : public QWidget
{
    Q_OBJECT

public:
    explicit SidebarView(AppState& state, QWidget* parent = nullptr);
    ~SidebarView() override;

    [[nodiscard]] FileTreeView& tree() const { return *m_tree; }
    [[nodiscard]] bool isSearchShown() const;
    /// Shows the search in place of the tree, or the tree again.
    void toggleSearch();
    /// Asks for a new name of `item`.
    void startRename(const FileURL& item);
    /// Reads the tree again, then walks the whole bucket in the background, which makes cloud services bring
    /// it up to date, and reads the tree once more.
    void refresh();

private:
    [[nodiscard]] QWidget* makeActions();
    void showMenu(const FileURL& item, bool isFolder, const QPoint& position);
    void showWhatIsPossible();

    AppState& m_state;
    IconButton* m_newNote = nullptr;
    IconButton* m_newFolder = nullptr;
    IconButton* m_search = nullptr;
    IconButton* m_refresh = nullptr;
    QStackedWidget* m_stack;
    FileTreeView* m_tree;
    SearchView* m_searchView;
    std::unique_ptr<ScheduledTask> m_walk;
};

} // namespace wendlore
