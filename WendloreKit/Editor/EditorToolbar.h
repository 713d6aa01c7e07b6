#pragma once

#include "Editor/EditorCommands.h"

#include <QWidget>

#include <utility>
#include <vector>

class QMenu;

namespace wendlore {

class AppState;
class ButtonRow;
class EditorPrompts;
class LabelButton;
class WebEditorController;

/// The formatting buttons of one editor, in the window's toolbar or in a bar inside the editor: zoom, the
/// block menu, toggles that show the format at the caret, and menus.
class EditorToolbar final : public QWidget
{
    Q_OBJECT

public:
    EditorToolbar(AppState& state, WebEditorController& controller, QWidget* parent = nullptr);

private:
    void add(const EditorZoom& zoom);
    void add(const EditorBlocks& blocks);
    void add(const EditorToggle& toggle);
    void add(const EditorMenu& menu);
    void fill(QMenu& menu, const std::vector<EditorCommand>& commands);
    void showFormat();
    void run(const EditorCommand& command);

    AppState& m_state;
    WebEditorController& m_controller;
    EditorPrompts* m_prompts;
    ButtonRow* m_row;
    LabelButton* m_block = nullptr;
    QMenu* m_blockMenu = nullptr;
    std::vector<std::pair<QAction*, bool ToolbarState::*>> m_toggles;
};

} // namespace wendlore
