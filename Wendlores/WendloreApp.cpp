#include "Wendlores/WendloreApp.h"

#include "Wendlores/CheckForUpdatesView.h"
#include "Wendlores/MenuCommands.h"
#include "Wendlores/OpenLocation.h"
#include "Wendlores/ThemeLink.h"

#include "Editor/EditorSession.h"
#include "Platform/FileAddress.h"
#include "Shell/WendloreFileWindowView.h"
#include "Shell/Windows.h"
#include "State/OpenFileWindows.h"
#include "State/UserDefaults.h"

#include <QApplication>
#include <QDrag>
#include <QFileInfo>
#include <QShortcut>
#include <QThread>
#include <QTimer>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace wendlore {

namespace {

/// After how long is looked again whether what was closed is gone.
constexpr auto panelPatience = 20ms;

} // namespace

WendloreApp::WendloreApp(const Services& services, SystemAppearance& system, Style& style,
                         const Updater::Configuration& updates)
    : m_updater(updates, services.defaults)
    , m_appState(services) // makes the web view, so the engine starts while the tree is being read
    , m_appearance(m_appState, system, style)
    , m_mainWindow(m_appState)
    , m_fileScene(m_appState, [this](const FileURL& file, std::function<void()> then) {
        EditorSession& session = m_mainWindow.session();
        if (session.fileURL() == file)
            session.settle(std::move(then));
        else
            then();
    })
{
    showLight();
    new CheckForUpdatesView(m_mainWindow.menus().helpMenu(), m_updater, services.workspace,
                            m_mainWindow.notice());
    connect(&m_fileScene, &WendloreFileScene::windowMade, this, &WendloreApp::equip);
    connect(&m_fileScene, &WendloreFileScene::windowsChanged, this, &WendloreApp::showWindows);
    connect(&m_fileScene, &WendloreFileScene::fileRequested, this, &WendloreApp::show);
    connect(&m_mainWindow, &MainWindow::quitRequested, this, &WendloreApp::quit);
}

/// Light until the user chooses.
void WendloreApp::showLight()
{
    if (!m_appState.services().defaults.string(u"theme"_s))
        m_appState.setTheme(AppTheme::light);
}

void WendloreApp::start()
{
    m_mainWindow.show();
    m_mainWindow.takeFocus();
    m_fileScene.restore();
}

void WendloreApp::show(const FileURL& location)
{
    if (OpenFileWindows::shared().isOpen(location)) {
        m_fileScene.open(location);
        return;
    }
    openLocation(m_appState, location);
    bringForward(m_mainWindow);
}

void WendloreApp::open(const QList<QUrl>& addresses)
{
    bringForward(m_mainWindow);
    for (const QUrl& address : addresses) {
        if (const auto theme = themeOfLink(address))
            m_appState.applyTypographyTheme(*theme);
        else if (const auto file = fileAt(address); file && QFileInfo::exists(file->path()))
            show(*file);
    }
}

void WendloreApp::quit()
{
    // Whoever opened a menu or a panel waits for its answer in the middle of their work: first comes that to
    // its end.
    if (QThread::currentThread()->loopLevel() > 1) {
        for (QWidget* asking : {QApplication::activePopupWidget(), QApplication::activeModalWidget()}) {
            if (asking)
                asking->close();
        }
        QDrag::cancel();
        QTimer::singleShot(panelPatience, this, &WendloreApp::quit);
        return;
    }
    m_fileScene.closeForQuitting();
    m_mainWindow.close();
}

void WendloreApp::equip(WendloreFileWindowView& window)
{
    if (!window.windowState()) { // there is no file, and nothing to do but to leave
        new QShortcut(Qt::CTRL | Qt::Key_W, &window, &window, &QWidget::close);
        new QShortcut(Qt::CTRL | Qt::Key_Q, &window, this, &WendloreApp::quit);
        return;
    }
    auto* menus = new MenuCommands(m_appState, *window.windowState(), window, MenuCommands::Scene::file);
    connect(menus, &MenuCommands::quitRequested, this, &WendloreApp::quit);
    connect(menus, &MenuCommands::workspaceRequested, &m_mainWindow, [this] { bringForward(m_mainWindow); });
    connect(menus, &MenuCommands::tabBarToggled, &m_mainWindow.menus(), &MenuCommands::tabBarToggled);
    connect(&m_fileScene, &WendloreFileScene::windowsChanged, menus, [this, menus] {
        QList<QWidget*> windows{&m_mainWindow};
        for (WendloreFileWindowView* other : m_fileScene.windows())
            windows.append(other);
        menus->setWindows(windows);
    });
}

void WendloreApp::showWindows()
{
    m_mainWindow.setOtherWindows({m_fileScene.windows().begin(), m_fileScene.windows().end()});
}

} // namespace wendlore
