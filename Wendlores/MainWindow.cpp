#include "Wendlores/MainWindow.h"

#include "Wendlores/MenuCommands.h"

#include "Editor/EditorSession.h"
#include "Editor/EditorView.h"
#include "Look/NoticeBar.h"
#include "Previews/ContentView.h"
#include "Previews/DetailView.h"
#include "Shell/FileTreeView.h"
#include "Shell/SidebarView.h"
#include "Shell/WindowGeometry.h"
#include "Shell/WindowTabBar.h"
#include "State/AppState.h"
#include "State/UserDefaults.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

const QString geometryKey = u"wendloreWindowGeometry"_s;
const QString splitKey = u"wendloreWindowSplit"_s;
const QString tabBarKey = u"wendloreWindowTabBar"_s;
constexpr QSize smallest(700, 400);
constexpr QSize first(1180, 790);

} // namespace

MainWindow::MainWindow(AppState& state, QWidget* parent)
    : QMainWindow(parent)
    , m_state(state)
    , m_content(new ContentView(state, new SidebarView(state)))
    , m_menus(new MenuCommands(state, state, *this, MenuCommands::Scene::main))
    , m_tabs(new WindowTabBar(this))
    , m_notice(new NoticeBar(u"arrow.down.circle"_s, this))
    , m_closing(*this, m_content->detail().editor())
{
    buildContent();
    connectSidebar(*m_content->findChild<SidebarView*>());
    setMinimumSize(smallest);
    restoreLayout();
    setOtherWindows({});
    connect(m_menus, &MenuCommands::sidebarToggled, this, &MainWindow::toggleSidebar);
    connect(m_menus, &MenuCommands::otherPaneRequested, this, &MainWindow::goToOtherPane);
    connect(m_menus, &MenuCommands::bucketSearchRequested, this, &MainWindow::searchBucket);
    connect(m_menus, &MenuCommands::tabBarToggled, this, &MainWindow::toggleTabBar);
    connect(m_menus, &MenuCommands::quitRequested, this, &MainWindow::quitRequested);
    connect(qGuiApp, &QGuiApplication::commitDataRequest, &session(), &EditorSession::flush);
    connect(&session(), &EditorSession::titleChanged, this, &MainWindow::showTitle);
    connect(&state, &AppState::selectedFileChanged, this, &MainWindow::showTitle);
    connect(&state, &AppState::vaultURLChanged, this, &MainWindow::showTitle);
    connect(&state, &AppState::vaultURLChanged, this, [this, had = state.vaultURL().has_value()]() mutable {
        if (!std::exchange(had, m_state.vaultURL().has_value()))
            takeFocus(); // the invitation to open a bucket had it, and is gone
    });
    showTitle();
}

EditorSession& MainWindow::session() const
{
    return m_content->detail().editor().session();
}

void MainWindow::buildContent()
{
    auto* stack = new QWidget(this);
    auto* layout = new QVBoxLayout(stack);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_tabs);
    layout->addWidget(m_notice);
    layout->addWidget(m_content, 1);
    setCentralWidget(stack);
}

void MainWindow::setOtherWindows(const QList<QWidget*>& windows)
{
    const QList<QWidget*> all = QList<QWidget*>{this} + windows;
    m_tabs->setWindows(all);
    m_menus->setWindows(all);
}

void MainWindow::takeFocus()
{
    if (m_state.vaultURL())
        m_content->findChild<SidebarView*>()->tree().setFocus();
    else
        m_content->detail().takeFocus();
}

void MainWindow::connectSidebar(SidebarView& sidebar)
{
    FileTreeView& tree = sidebar.tree();
    tree.setUndoRegistrar(&m_undo);
    m_menus->edit().setMoves(m_moves, tree);
}

void MainWindow::showTitle()
{
    const auto& file = m_state.selectedFile();
    const auto& bucket = m_state.vaultURL();
    setWindowFilePath(file ? file->path() : QString());
    setWindowTitle(file ? file->nameWithoutExtension() : bucket ? bucket->lastPathComponent() : QString());
}

void MainWindow::toggleSidebar()
{
    QWidget* sidebar = m_content->widget(0);
    sidebar->setVisible(sidebar->isHidden());
}

void MainWindow::goToOtherPane()
{
    auto* sidebar = m_content->findChild<SidebarView*>();
    if (sidebar->isVisible() && !sidebar->isAncestorOf(focusWidget()))
        sidebar->takeFocus();
    else
        m_content->detail().takeFocus();
    setAttribute(Qt::WA_KeyboardFocusChange); // shows where the keyboard is, as Tab does
}

void MainWindow::searchBucket()
{
    auto* sidebar = m_content->findChild<SidebarView*>();
    sidebar->show();
    sidebar->search();
}

void MainWindow::toggleTabBar()
{
    m_tabs->setVisible(m_tabs->isHidden());
    m_state.services().defaults.setNumber(tabBarKey, m_tabs->isHidden() ? 0 : 1);
}

void MainWindow::restoreLayout()
{
    const UserDefaults& defaults = m_state.services().defaults;
    const auto stored = QJsonDocument::fromJson(defaults.data(geometryKey).value_or(QByteArray()));
    resize(WindowGeometry::firstSize(*this, first));
    if (const auto geometry = WindowGeometry::fromJson(stored.object()))
        geometry->applyTo(*this);
    if (const auto split = defaults.data(splitKey))
        m_content->restoreState(*split);
    m_tabs->setVisible(defaults.number(tabBarKey) != 0);
}

void MainWindow::keepLayout() const
{
    UserDefaults& defaults = m_state.services().defaults;
    defaults.setData(geometryKey,
                     QJsonDocument(WindowGeometry::of(*this).toJson()).toJson(QJsonDocument::Compact));
    defaults.setData(splitKey, m_content->saveState());
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (m_closing.mayClose(*event))
        keepLayout();
}

} // namespace wendlore
