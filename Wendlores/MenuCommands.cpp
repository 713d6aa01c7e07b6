#include "Wendlores/MenuCommands.h"

#include "Wendlores/AboutSheet.h"

#include "Editor/WebEditorController.h"
#include "Previews/ZoomableView.h"
#include "Shell/Windows.h"
#include "State/AppState.h"
#include "State/OpenFileWindows.h"
#include "State/Workspace.h"
#include "Vault/FilePreviewKind.h"

#include <QActionGroup>
#include <QMainWindow>
#include <QMenuBar>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace wendlore {

MenuCommands::MenuCommands(AppState& workspace, AppState& shown, QMainWindow& window, Scene scene)
    : QObject(&window)
    , m_workspace(workspace)
    , m_shown(shown)
    , m_window(window)
    , m_scene(scene)
    , m_edit(shown.editorController(), window)
{
    addFileMenu();
    addEditMenu();
    addViewMenu();
    addWindowMenu();
    addHelpMenu();
    connect(&workspace, &AppState::vaultURLChanged, this, &MenuCommands::showWhatIsPossible);
    connect(&shown, &AppState::selectedFileChanged, this, &MenuCommands::showWhatIsPossible);
    showWhatIsPossible();
}

QMenu* MenuCommands::addMenu(const QString& title)
{
    return m_window.menuBar()->addMenu(title);
}

void MenuCommands::addFileMenu()
{
    QMenu* menu = addMenu(u"&Arkiv"_s);
    addWorkspaceCommands(*menu);
    menu->addSeparator();
    menu->addAction(u"Importera typografi…"_s, QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_T), &m_workspace,
                    &AppState::importTypographyTheme);
    menu->addSeparator();
    menu->addAction(u"Stäng fönster"_s, QKeySequence(Qt::CTRL | Qt::Key_W), &m_window, &QWidget::close);
    menu->addAction(u"Avsluta"_s, QKeySequence(Qt::CTRL | Qt::Key_Q), this, &MenuCommands::quitRequested);
}

void MenuCommands::addWorkspaceCommands(QMenu& menu)
{
    menu.addAction(u"Öppna bucket…"_s, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O), this, [this] {
        const auto before = m_workspace.vaultURL();
        m_workspace.pickVault();
        if (m_workspace.vaultURL() != before)
            Q_EMIT workspaceRequested();
    });
    m_needBucket.push_back(menu.addAction(u"Ny not"_s, QKeySequence(Qt::CTRL | Qt::Key_N), this, [this] {
        m_workspace.newNote();
        Q_EMIT workspaceRequested();
    }));
    m_needBucket.push_back(menu.addAction(u"Ny mapp"_s, this, [this] {
        if (const auto& bucket = m_workspace.vaultURL())
            m_workspace.newFolder(*bucket);
        Q_EMIT workspaceRequested();
    }));
}

void MenuCommands::addEditMenu()
{
    QMenu* menu = addMenu(u"&Redigera"_s);
    m_edit.addTo(*menu, EditCommands::Part::edit);
    if (m_scene == Scene::main)
        m_needBucket.push_back(menu->addAction(u"Sök i bucketen"_s,
                                               QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F), this,
                                               &MenuCommands::bucketSearchRequested));
}

void MenuCommands::addViewMenu()
{
    QMenu* menu = addMenu(u"&Visa"_s);
    if (m_scene == Scene::main) {
        menu->addAction(u"Visa/Dölj sidofält"_s, QKeySequence(Qt::Key_F9), this,
                        &MenuCommands::sidebarToggled);
        menu->addAction(u"Gå mellan sidofält och not"_s, QKeySequence(Qt::Key_F6), this,
                        &MenuCommands::otherPaneRequested);
        menu->addSeparator();
    }
    addZoomCommands(*menu);
    m_edit.addTo(*menu, EditCommands::Part::view);
    menu->addSeparator();
    menu->addAction(u"Visa/Dölj flikrad"_s, this, &MenuCommands::tabBarToggled);
    if (m_scene == Scene::main)
        addAppearanceMenu(*menu->addMenu(u"Utseende"_s));
    menu->addSeparator();
    menu->addAction(u"Helskärm"_s, QKeySequence(Qt::Key_F11), &m_window,
                    [this] { m_window.setWindowState(m_window.windowState() ^ Qt::WindowFullScreen); });
}

void MenuCommands::addZoomCommands(QMenu& menu)
{
    // `zoom` does the same to the text of notes and to a view of another file.
    const auto onWhatIsSeen = [this](auto zoom) {
        return [this, zoom] {
            if (ZoomableView* view = ZoomableView::seenIn(m_window))
                zoom(*view);
            else
                zoom(m_shown);
        };
    };
    QAction* larger =
        menu.addAction(u"Förstora text"_s, this, onWhatIsSeen([](auto& shown) { shown.zoomIn(); }));
    // The plus sign needs Shift on some keyboards; the key itself has to do there.
    larger->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)});
    QAction* smaller = menu.addAction(u"Förminska text"_s, QKeySequence(Qt::CTRL | Qt::Key_Minus), this,
                                      onWhatIsSeen([](auto& shown) { shown.zoomOut(); }));
    QAction* reset = menu.addAction(u"Återställ textstorlek"_s, QKeySequence(Qt::CTRL | Qt::Key_0), this,
                                    onWhatIsSeen([](auto& shown) { shown.resetZoom(); }));
    m_needFile = {larger, smaller, reset};
}

void MenuCommands::addAppearanceMenu(QMenu& menu)
{
    auto* group = new QActionGroup(&menu);
    const std::pair<AppTheme, QString> themes[] = {
        {AppTheme::automatic, u"Automatiskt"_s}, {AppTheme::light, u"Ljust"_s}, {AppTheme::dark, u"Mörkt"_s}};
    for (const auto& [theme, title] : themes) {
        QAction* action =
            menu.addAction(title, &m_workspace, [this, chosen = theme] { m_workspace.setTheme(chosen); });
        action->setCheckable(true);
        group->addAction(action);
        const auto showChoice = [this, action, chosen = theme] {
            action->setChecked(m_workspace.theme() == chosen);
        };
        connect(&m_workspace, &AppState::themeChanged, action, showChoice);
        showChoice();
    }
}

void MenuCommands::addWindowMenu()
{
    m_windows = addMenu(u"&Fönster"_s);
    m_windows->addAction(u"Minimera"_s, QKeySequence(Qt::CTRL | Qt::Key_M), &m_window,
                         &QWidget::showMinimized);
    if (m_scene == Scene::main) {
        m_needFile.push_back(m_windows->addAction(u"Öppna i eget fönster"_s, &m_shown, [this] {
            if (const auto& file = m_shown.selectedFile(); file && isViewableFile(*file))
                OpenFileWindows::shared().requestWindow(*file);
        }));
    }
    m_windows->addSeparator();
    m_windowEntries = new QActionGroup(this);
    setWindows({&m_window});
}

void MenuCommands::setWindows(const QList<QWidget*>& windows)
{
    const QList<QAction*> old = m_windowEntries->actions();
    qDeleteAll(old);
    for (QWidget* window : windows) {
        QAction* entry = m_windows->addAction({}, window, [window] { bringForward(*window); });
        entry->setCheckable(true);
        entry->setChecked(window == &m_window);
        m_windowEntries->addAction(entry);
        const auto showTitle = [this, window, entry] {
            entry->setText(windowName(*window).replace(u'&', u"&&"_s));
            entry->setChecked(window == &m_window);
        };
        connect(window, &QWidget::windowTitleChanged, entry, showTitle);
        connect(entry, &QAction::triggered, entry, showTitle);
        showTitle();
    }
}

void MenuCommands::addHelpMenu()
{
    m_help = addMenu(u"&Hjälp"_s);
    m_help->addAction(u"Om Wendlores"_s, this, [this] { (new AboutSheet(&m_window))->open(); });
    m_help->addAction(u"Rapportera fel && önskemål"_s, this, [this] {
        m_shown.services().workspace.open(QUrl(QStringLiteral(WENDLORE_FEEDBACK_ADDRESS)));
    });
}

void MenuCommands::showWhatIsPossible()
{
    for (QAction* action : m_needBucket)
        action->setEnabled(m_workspace.vaultURL().has_value());
    for (QAction* action : m_needFile)
        action->setEnabled(m_shown.selectedFile().has_value());
}

} // namespace wendlore
