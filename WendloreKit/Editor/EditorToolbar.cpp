#include "Editor/EditorToolbar.h"

#include "Editor/EditorCommands.h"

#include "Look/FlatButton.h"
#include "Look/Metrics.h"
#include "Look/Separator.h"
#include "Look/Symbols.h"
#include "State/AppState.h"

#include <QHBoxLayout>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace wendlore {

EditorToolbar::EditorToolbar(AppState& state, WebEditorController& controller, QWidget* parent)
    : QWidget(parent)
    , m_state(state)
    , m_controller(controller)
    , m_row(new QHBoxLayout(this))
{
    m_row->setContentsMargins(0, 0, 0, 0);
    m_row->setSpacing(metrics::toolbarSpacing);
    addZoomButtons();
    m_row->addWidget(new Separator(this));
    addBlockMenu();
    addToggles();
    addMenu(formatMenu());
    addMenu(listMenu());
    addTableMenu();
    connect(&controller, &WebEditorController::stateChanged, this, &EditorToolbar::showFormat);
    showFormat();
}

void EditorToolbar::addZoomButtons()
{
    auto* out =
        new IconButton(u"minus.magnifyingglass"_s, u"Förminska text"_s, u"Förminska text (⌘−)"_s, this);
    auto* in = new IconButton(u"plus.magnifyingglass"_s, u"Förstora text"_s, u"Förstora text (⌘+)"_s, this);
    connect(out, &IconButton::clicked, &m_state, &AppState::zoomOut);
    connect(in, &IconButton::clicked, &m_state, &AppState::zoomIn);
    m_row->addWidget(out);
    m_row->addWidget(in);
}

void EditorToolbar::addBlockMenu()
{
    m_block = new LabelButton({}, Tone::muted, this);
    m_block->setTrailingSymbol(u"chevron.down"_s);
    auto* menu = new QMenu(m_block);
    fill(*menu, blockCommands());
    m_block->setMenu(menu);
    m_row->addWidget(m_block);
}

void EditorToolbar::addToggles()
{
    for (const EditorToggle& toggle : toggleCommands()) {
        auto* button = new IconButton(toggle.command.symbol, toggle.command.title, toggle.help, this);
        button->setCheckable(true);
        connect(button, &IconButton::clicked, this, [this, &toggle] {
            showFormat(); // the page decides what is on, and reports it
            exec(toggle.command);
        });
        m_toggles.push_back(button);
        m_row->addWidget(button);
    }
}

IconButton* EditorToolbar::addMenuButton(const EditorMenu& menu)
{
    auto* button = new IconButton(menu.symbol, menu.help, menu.help, this);
    button->setMenu(new QMenu(button));
    m_row->addWidget(button);
    return button;
}

void EditorToolbar::addMenu(const EditorMenu& menu)
{
    fill(*addMenuButton(menu)->menu(), menu.commands);
}

void EditorToolbar::addTableMenu()
{
    QMenu* menu = addMenuButton(tableMenu({}))->menu();
    connect(menu, &QMenu::aboutToShow, this, [this, menu] {
        menu->clear();
        fill(*menu, tableMenu(m_controller.state()).commands);
    });
}

void EditorToolbar::fill(QMenu& menu, const std::vector<EditorCommand>& commands)
{
    for (const EditorCommand& command : commands) {
        if (command.startsGroup)
            menu.addSeparator();
        QAction* entry = menu.addAction(command.title);
        if (!command.symbol.isEmpty())
            entry->setIcon(symbolIcon(command.symbol));
        connect(entry, &QAction::triggered, this, [this, &command] { exec(command); });
    }
}

void EditorToolbar::showFormat()
{
    const ToolbarState& state = m_controller.state();
    const QString block = blockLabel(state);
    if (m_block->text() != block) {
        m_block->setText(block);
        m_block->describe(u"Textstil: %1"_s.arg(block), {});
    }
    for (std::size_t i = 0; i < m_toggles.size(); ++i)
        m_toggles[i]->setChecked(state.*toggleCommands()[i].isOn);
}

void EditorToolbar::exec(const EditorCommand& command)
{
    m_controller.exec(command.word, command.value);
    m_controller.focus();
}

} // namespace wendlore
