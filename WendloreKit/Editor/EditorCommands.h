#pragma once

#include "Editor/WebEditorController.h"

#include <QString>

#include <variant>
#include <vector>

namespace wendlore {

class AppState;

/// What the user is asked for before there is something to insert.
enum class EditorQuestion { none, image, video, link };

/// One command as the user sees it, and what is sent to the editor page for it.
struct EditorCommand final
{
    QString title;
    QString symbol; ///< empty where the entry is text only
    QString word;   ///< sent at once, unless something is asked first
    WebEditorController::CommandValue value = {};
    EditorQuestion question = EditorQuestion::none;
    bool startsGroup = false; ///< a divider stands before it
};

/// A button of the toolbar that changes the size of the text.
struct EditorZoom final
{
    QString title;
    QString help;
    QString symbol;
    void (AppState::*step)();
};

/// The menu of the toolbar that shows, and sets, what kind of block the caret is in.
struct EditorBlocks final
{
    std::vector<EditorCommand> commands;
};

/// A button of the toolbar that switches a format on and off.
struct EditorToggle final
{
    EditorCommand command;
    QString help;
    bool ToolbarState::*isOn;
};

/// A button of the toolbar that opens a menu; its entries depend on where the caret is.
struct EditorMenu final
{
    QString help;
    QString symbol;
    const std::vector<EditorCommand>& (*commands)(const ToolbarState& state);
};

using EditorItem = std::variant<EditorZoom, EditorBlocks, EditorToggle, EditorMenu>;

/// Everything that the toolbar and the bar inside the editor offer, in order.
[[nodiscard]] const std::vector<EditorItem>& editorItems();

/// The name of the block that the caret is in, as the block menu shows it.
[[nodiscard]] QString blockLabel(const ToolbarState& state);

} // namespace wendlore
