#include "Shell/SidebarView.h"

#include "Shell/BucketSwitcher.h"
#include "Shell/FileTreeView.h"
#include "Shell/RenamePrompt.h"
#include "Shell/SearchView.h"
#include "Shell/SidebarFooter.h"
#include "Shell/TreeMenus.h"

#include "Editor/Scheduler.h"
#include "Look/Colors.h"
#include "Look/FlatButton.h"
#include "Look/Metrics.h"
#include "State/AppState.h"
#include "State/OpenFileWindows.h"
#include "Vault/FileCoordinator.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QPointer>
#include <QStackedWidget>

#include <utility>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int topMargin = 10;
constexpr int actionsInset = 10;

} // namespace

SidebarView::SidebarView(AppState& state, QWidget* parent)
    : QWidget(parent)
    , m_state(state)
    , m_stack(new QStackedWidget(this))
    , m_tree(new FileTreeView(state, m_stack))
    , m_searchView(new SearchView(state, m_stack))
{
    setAccessibleName(u"Sidofält"_s);
    setAutoFillBackground(true);
    setBackgroundRole(sideRole);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, topMargin, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(new BucketSwitcher(state, this));
    layout->addSpacing(metrics::inset / 2);
    layout->addWidget(makeActions());
    layout->addSpacing(metrics::inset);
    m_stack->addWidget(m_tree);
    m_stack->addWidget(m_searchView);
    layout->addWidget(m_stack, 1);
    layout->addWidget(new SidebarFooter(state.services().workspace, this));
    connect(&state, &AppState::vaultURLChanged, this, &SidebarView::endRefresh);
    connect(m_tree, &FileTreeView::menuRequested, this, &SidebarView::showMenu);
    connect(m_tree, &FileTreeView::renameRequested, this, &SidebarView::startRename);
    connect(m_searchView, &SearchView::endRequested, this, &SidebarView::toggleSearch);
    showWhatIsPossible();
}

SidebarView::~SidebarView() = default;

QWidget* SidebarView::makeActions()
{
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(actionsInset, 0, actionsInset, 0);
    layout->setSpacing(metrics::toolbarSpacing);
    m_newNote = new IconButton(u"square.and.pencil"_s, u"Ny not"_s, u"Ny not"_s, row);
    m_newFolder = new IconButton(u"folder.badge.plus"_s, u"Ny mapp"_s, u"Ny mapp"_s, row);
    m_search = new IconButton(u"magnifyingglass"_s, u"Sök"_s, u"Sök i bucketen"_s, row);
    m_search->setCheckable(true);
    m_refresh = new IconButton(u"arrow.clockwise"_s, u"Uppdatera"_s,
                               u"Uppdatera (puffar iCloud/Dropbox att synka)"_s, row);
    for (IconButton* button : {m_newNote, m_newFolder, m_search, m_refresh})
        layout->addWidget(button);
    layout->addStretch();
    connect(m_newNote, &IconButton::clicked, &m_state, [this] { m_state.newNote(); });
    connect(m_newFolder, &IconButton::clicked, &m_state, [this] {
        if (const auto folder = m_state.activeDirectory())
            m_state.newFolder(*folder);
    });
    connect(m_search, &IconButton::clicked, this, &SidebarView::toggleSearch);
    connect(m_refresh, &IconButton::clicked, this, &SidebarView::refresh);
    return row;
}

bool SidebarView::isSearchShown() const
{
    return m_stack->currentWidget() == m_searchView;
}

void SidebarView::toggleSearch()
{
    const bool isShown = !isSearchShown();
    m_search->setChecked(isShown);
    m_stack->setCurrentWidget(isShown ? static_cast<QWidget*>(m_searchView) : m_tree);
    if (isShown) {
        m_searchView->start();
    } else {
        m_searchView->end();
        m_tree->setFocus();
    }
    showWhatIsPossible();
}

void SidebarView::search()
{
    if (!isSearchShown())
        toggleSearch();
    takeFocus();
}

void SidebarView::takeFocus()
{
    if (isSearchShown())
        m_searchView->start();
    else
        m_tree->setFocus(Qt::TabFocusReason);
}

void SidebarView::startRename(const FileURL& item)
{
    (new RenamePrompt(m_state, item, window()))->open();
}

void SidebarView::showMenu(const FileURL& item, bool isFolder, const QPoint& position)
{
    TreeMenuActions actions{[this](const FileURL& target) { startRename(target); }, {}};
    if (OpenFileWindows::shared().canOpen())
        actions.openWindow = [](const FileURL& file) { OpenFileWindows::shared().requestWindow(file); };
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    addItems(*menu, isFolder ? macFolderMenuItems(m_state, item, actions)
                             : macFileMenuItems(m_state, item, actions));
    menu->popup(position);
}

void SidebarView::refresh()
{
    if (std::exchange(m_isRefreshing, true))
        return;
    showWhatIsPossible();
    readTree([this] { visitBucket(); });
}

void SidebarView::visitBucket()
{
    if (!m_isRefreshing) // another bucket was opened meanwhile
        return;
    const auto visit = [this, &coordinator = m_state.services().coordinator,
                        bucket = *m_state.vaultURL()]() -> std::function<void()> {
        coordinator.visitEverythingBelow(bucket);
        return [this] { readTree([this] { endRefresh(); }); };
    };
    m_visit = m_state.services().scheduler.inBackground(visit);
}

void SidebarView::endRefresh()
{
    m_visit.reset();
    m_isRefreshing = false;
    showWhatIsPossible();
}

void SidebarView::readTree(std::function<void()> then)
{
    m_state.reloadTreeInBackground([sidebar = QPointer(this), then = std::move(then)] {
        if (sidebar)
            then();
    });
}

void SidebarView::showWhatIsPossible()
{
    m_newNote->setEnabled(m_state.vaultURL().has_value());
    m_newFolder->setEnabled(m_state.vaultURL().has_value());
    m_search->setEnabled(m_state.vaultURL().has_value() || isSearchShown());
    m_refresh->setEnabled(m_state.vaultURL().has_value() && !m_isRefreshing);
}

} // namespace wendlore
