#include "Wendlores/MainWindow.h"

#include "Wendlores/MenuCommands.h"

#include "Editor/EditorSession.h"
#include "Editor/EditorView.h"
#include "Previews/ContentView.h"
#include "Previews/DetailView.h"
#include "Shell/FileTreeView.h"
#include "Shell/SidebarView.h"
#include "State/AppState.h"
#include "State/UserDefaults.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QMenuBar>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

const QString geometryKey = u"wendloreWindowGeometry"_s;
const QString splitKey = u"wendloreWindowSplit"_s;
constexpr QSize smallest(700, 400);
constexpr QSize first(1180, 790);

} // namespace

MainWindow::MainWindow(AppState& state, QWidget* parent)
    : QMainWindow(parent)
    , m_state(state)
    , m_content(new ContentView(state, new SidebarView(state)))
{
    setCentralWidget(m_content);
    connectSidebar(*m_content->findChild<SidebarView*>());
    new MenuCommands(state, *this);
    setMinimumSize(smallest);
    restoreGeometryAndSplit();
    EditorSession& session = m_content->detail().editor().session();
    connect(qGuiApp, &QGuiApplication::commitDataRequest, &session, [&session] { session.flush(); });
    connect(&session, &EditorSession::titleChanged, this, &MainWindow::showTitle);
    connect(&state, &AppState::selectedFileChanged, this, &MainWindow::showTitle);
    connect(&state, &AppState::vaultURLChanged, this, &MainWindow::showTitle);
    showTitle();
}

void MainWindow::connectSidebar(SidebarView& sidebar)
{
    FileTreeView& tree = sidebar.tree();
    tree.setUndoRegistrar(&m_undo);
    connect(&tree, &FileTreeView::undoRequested, &m_moves, &QUndoStack::undo);
    connect(&tree, &FileTreeView::redoRequested, &m_moves, &QUndoStack::redo);
}

void MainWindow::showTitle()
{
    const auto& file = m_state.selectedFile();
    const auto& bucket = m_state.vaultURL();
    setWindowFilePath(file ? file->path() : QString());
    setWindowTitle(file ? file->nameWithoutExtension() : bucket ? bucket->lastPathComponent() : QString());
}

void MainWindow::restoreGeometryAndSplit()
{
    const UserDefaults& defaults = m_state.services().defaults;
    if (!restoreGeometry(defaults.data(geometryKey).value_or(QByteArray())))
        resize(first);
    if (const auto split = defaults.data(splitKey))
        m_content->restoreState(*split);
}

void MainWindow::keepGeometryAndSplit() const
{
    UserDefaults& defaults = m_state.services().defaults;
    defaults.setData(geometryKey, saveGeometry());
    defaults.setData(splitKey, m_content->saveState());
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (m_closing == Closing::settled) {
        event->accept();
        return;
    }
    event->ignore();
    if (m_closing == Closing::waiting)
        return;
    m_closing = Closing::waiting;
    keepGeometryAndSplit();
    const auto closeForGood = [this] {
        m_closing = Closing::settled;
        close();
    };
    m_content->detail().editor().session().settle([this, closeForGood] {
        // Perhaps at once, and this very event has to end first.
        QMetaObject::invokeMethod(this, closeForGood, Qt::QueuedConnection);
    });
}

} // namespace wendlore
