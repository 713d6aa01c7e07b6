#include "Editor/EditorToolbar.h"

#include "Editor/EditorPrompts.h"

#include "Look/ButtonRow.h"
#include "Look/FlatButton.h"
#include "Look/Symbols.h"
#include "State/AppState.h"

#include <QHBoxLayout>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// Wide enough for every block's name, so that nothing moves when the caret does.
int widestLabel(LabelButton& button, const std::vector<EditorCommand>& commands)
{
    int width = 0;
    for (const EditorCommand& command : commands) {
        button.setText(command.title);
        width = std::max(width, button.sizeHint().width());
    }
    button.setText({});
    return width;
}

} // namespace

EditorToolbar::EditorToolbar(AppState& state, WebEditorController& controller, QWidget* parent)
    : QWidget(parent)
    , m_state(state)
    , m_controller(controller)
    , m_prompts(new EditorPrompts(state, controller, this))
    , m_row(new ButtonRow(this))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_row);
    for (const EditorItem& item : editorItems())
        std::visit([this](const auto& entry) { add(entry); }, item);
    connect(&controller, &WebEditorController::stateChanged, this, &EditorToolbar::showFormat);
    showFormat();
}

void EditorToolbar::add(const EditorZoom& zoom)
{
    auto* button = new IconButton(zoom.symbol, zoom.title, zoom.help, m_row);
    auto* action = new QAction(symbolIcon(zoom.symbol), zoom.title, button);
    connect(action, &QAction::triggered, &m_state, zoom.step);
    connect(button, &IconButton::clicked, action, &QAction::trigger);
    m_row->add(button, action);
}

void EditorToolbar::add(const EditorBlocks& blocks)
{
    m_row->addSeparator();
    m_block = new LabelButton({}, Tone::muted, m_row);
    m_block->setTrailingSymbol(u"chevron.down"_s);
    m_block->setFixedWidth(widestLabel(*m_block, blocks.commands));
    m_blockMenu = new QMenu(m_block);
    fill(*m_blockMenu, blocks.commands);
    m_block->setMenu(m_blockMenu);
    m_row->add(m_block, m_blockMenu->menuAction());
}

void EditorToolbar::add(const EditorToggle& toggle)
{
    const EditorCommand& command = toggle.command;
    auto* button = new IconButton(command.symbol, command.title, toggle.help, m_row);
    auto* action = new QAction(symbolIcon(command.symbol), command.title, button);
    button->setCheckable(true);
    action->setCheckable(true);
    connect(action, &QAction::toggled, button, &IconButton::setChecked);
    connect(action, &QAction::triggered, this, [this, &command] {
        showFormat(); // the page decides what is on, and reports it
        run(command);
    });
    connect(button, &IconButton::clicked, action, &QAction::trigger);
    m_toggles.emplace_back(action, toggle.isOn);
    m_row->add(button, action);
}

void EditorToolbar::add(const EditorMenu& menu)
{
    auto* button = new IconButton(menu.symbol, menu.help, menu.help, m_row);
    auto* entries = new QMenu(menu.help, button);
    entries->menuAction()->setIcon(symbolIcon(menu.symbol));
    fill(*entries, menu.commands(m_controller.state()));
    connect(entries, &QMenu::aboutToShow, this, [this, entries, &menu] {
        entries->clear();
        fill(*entries, menu.commands(m_controller.state()));
    });
    button->setMenu(entries);
    m_row->add(button, entries->menuAction());
}

void EditorToolbar::fill(QMenu& menu, const std::vector<EditorCommand>& commands)
{
    for (const EditorCommand& command : commands) {
        if (command.startsGroup)
            menu.addSeparator();
        QAction* entry = menu.addAction(command.title);
        if (!command.symbol.isEmpty())
            entry->setIcon(symbolIcon(command.symbol));
        connect(entry, &QAction::triggered, this, [this, &command] { run(command); });
    }
}

void EditorToolbar::showFormat()
{
    const ToolbarState& state = m_controller.state();
    const QString block = blockLabel(state);
    if (m_block->text() != block) {
        m_block->setText(block);
        m_block->describe(u"Textstil: %1"_s.arg(block), {});
        m_blockMenu->setTitle(block);
    }
    for (const auto& [action, isOn] : m_toggles)
        action->setChecked(state.*isOn);
}

void EditorToolbar::run(const EditorCommand& command)
{
    switch (command.question) {
    case EditorQuestion::none:
        m_controller.exec(command.word, command.value);
        m_controller.focus();
        break;
    case EditorQuestion::image:
        m_prompts->showImageImporter();
        break;
    case EditorQuestion::video:
        m_prompts->showVideoPrompt();
        break;
    case EditorQuestion::link:
        m_prompts->showLinkPrompt();
        break;
    }
}

} // namespace wendlore
