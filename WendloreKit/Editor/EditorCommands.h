#pragma once

#include "Editor/WebEditorController.h"

#include <QString>

#include <vector>

namespace wendlore {

/// One formatting command as the user sees it, and what is sent to the editor page for it.
struct EditorCommand final
{
    QString title;
    QString symbol; ///< empty where the entry is text only
    QString word;
    WebEditorController::CommandValue value = {};
    bool startsGroup = false; ///< a divider stands before it
};

/// A button of the toolbar that switches a format on and off.
struct EditorToggle final
{
    EditorCommand command;
    QString help;
    bool ToolbarState::*isOn;
};

/// A button of the toolbar that opens a menu.
struct EditorMenu final
{
    QString help;
    QString symbol;
    std::vector<EditorCommand> commands;
};

// All formatting commands, in the order in which toolbar and menus show them.
[[nodiscard]] const std::vector<EditorCommand>& blockCommands();
[[nodiscard]] const std::vector<EditorToggle>& toggleCommands();
[[nodiscard]] const EditorMenu& formatMenu();
[[nodiscard]] const EditorMenu& listMenu();
/// The table menu while the caret is outside or inside a table.
[[nodiscard]] const EditorMenu& tableMenu(const ToolbarState& state);

/// The name of the block that the caret is in, as the block menu shows it.
[[nodiscard]] QString blockLabel(const ToolbarState& state);

} // namespace wendlore
