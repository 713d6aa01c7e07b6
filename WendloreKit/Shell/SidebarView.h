#pragma once

#include <QWidget>

#include <functional>
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
    /// Shows the search, and puts the caret into its field.
    void search();
    /// Gives the keyboard to the tree, or to the search that stands in its place.
    void takeFocus();
    /// Asks for a new name of `item`.
    void startRename(const FileURL& item);
    /// Shows at once what is on disk now, lets cloud services bring the bucket up to date, and shows what
    /// came. The window goes on meanwhile.
    void refresh();

private:
    [[nodiscard]] QWidget* makeActions();
    void readTree(std::function<void()> then);
    void visitBucket();
    void endRefresh();
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
    bool m_isRefreshing = false;
    std::unique_ptr<ScheduledTask> m_visit;
};

} // namespace wendlore
