#include "Wendlores/MenuCommands.h"

#include "Editor/WebEditorController.h"
#include "State/AppState.h"

#include <QActionGroup>
#include <QMainWindow>
#include <QMenuBar>

using namespace Qt::StringLiterals;

namespace wendlore {

MenuCommands::MenuCommands(AppState& state, QMainWindow& window)
    : QObject(&window)
    , m_state(state)
    , m_window(window)
    , m_edit(state.editorController())
{
    addFileMenu();
    addEditMenu();
    addViewMenu();
    connect(&state, &AppState::vaultURLChanged, this, &MenuCommands::showWhatIsPossible);
    connect(&state, &AppState::selectedFileChanged, this, &MenuCommands::showWhatIsPossible);
    showWhatIsPossible();
}

QMenu* MenuCommands::addMenu(const QString& title)
{
    return m_window.menuBar()->addMenu(title);
}

void MenuCommands::addFileMenu()
{
    QMenu* menu = addMenu(u"&Arkiv"_s);
    menu->addAction(u"Öppna bucket…"_s, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O), &m_state,
                    &AppState::pickVault);
    m_needBucket.push_back(menu->addAction(u"Ny not"_s, QKeySequence(Qt::CTRL | Qt::Key_N), &m_state,
                                           [this] { m_state.newNote(); }));
    m_needBucket.push_back(menu->addAction(u"Ny mapp"_s, &m_state, [this] {
        if (const auto& bucket = m_state.vaultURL())
            m_state.newFolder(*bucket);
    }));
    menu->addSeparator();
    menu->addAction(u"Importera typografi…"_s, QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_T), &m_state,
                    &AppState::importTypographyTheme);
    menu->addSeparator();
    menu->addAction(u"Avsluta"_s, QKeySequence(Qt::CTRL | Qt::Key_Q), &m_window, &QWidget::close);
}

void MenuCommands::addEditMenu()
{
    m_edit.addTo(*addMenu(u"&Redigera"_s));
}

void MenuCommands::addViewMenu()
{
    QMenu* menu = addMenu(u"&Visa"_s);
    QAction* larger = menu->addAction(u"Förstora text"_s, &m_state, &AppState::zoomIn);
    // The plus sign needs Shift on some keyboards; the key itself has to do there.
    larger->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)});
    QAction* smaller = menu->addAction(u"Förminska text"_s, QKeySequence(Qt::CTRL | Qt::Key_Minus), &m_state,
                                       &AppState::zoomOut);
    QAction* reset = menu->addAction(u"Återställ textstorlek"_s, QKeySequence(Qt::CTRL | Qt::Key_0), &m_state,
                                     &AppState::resetZoom);
    m_needFile = {larger, smaller, reset};
    menu->addSeparator();
    addAppearanceMenu(*menu->addMenu(u"Utseende"_s));
}

void MenuCommands::addAppearanceMenu(QMenu& menu)
{
    auto* group = new QActionGroup(&menu);
    const std::pair<AppTheme, QString> themes[] = {
        {AppTheme::automatic, u"Automatiskt"_s}, {AppTheme::light, u"Ljust"_s}, {AppTheme::dark, u"Mörkt"_s}};
    for (const auto& [theme, title] : themes) {
        QAction* action =
            menu.addAction(title, &m_state, [this, chosen = theme] { m_state.setTheme(chosen); });
        action->setCheckable(true);
        group->addAction(action);
        const auto showChoice = [this, action, chosen = theme] {
            action->setChecked(m_state.theme() == chosen);
        };
        connect(&m_state, &AppState::themeChanged, action, showChoice);
        showChoice();
    }
}

void MenuCommands::showWhatIsPossible()
{
    for (QAction* action : m_needBucket)
        action->setEnabled(m_state.vaultURL().has_value());
    for (QAction* action : m_needFile)
        action->setEnabled(m_state.selectedFile().has_value());
}

} // namespace wendlore
