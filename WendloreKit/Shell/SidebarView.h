#pragma once

#include <QWidget>

#include <functional>

class QStackedWidget;

namespace wendlore {

class AppState;
class FileTreeView;
class FileURL;
class IconButton;
class SearchView;

/// The left column: the bucket switcher, the row of actions, the open bucket's tree or the search through it,
/// and at the bottom where to report things and which build this is.
class SidebarView final : public QWidget
{
    Q_OBJECT

public:
    explicit SidebarView(AppState& state, QWidget* parent = nullptr);

    [[nodiscard]] FileTreeView& tree() const { return *m_tree; }
    [[nodiscard]] bool isSearchShown() const;
    /// Shows the search in place of the tree, or the tree again.
    void toggleSearch();
    /// Gives the keyboard to the tree, or to the search that stands in its place.
    void takeFocus();
    /// Asks for a new name of `item`.
    void startRename(const FileURL& item);
    /// Reads the tree again, which walks the whole bucket and so makes cloud services bring it up to date,
    /// and then once more. The window goes on meanwhile.
    void refresh();

private:
    [[nodiscard]] QWidget* makeActions();
    void readTree(std::function<void()> then);
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
};

} // namespace wendlore
