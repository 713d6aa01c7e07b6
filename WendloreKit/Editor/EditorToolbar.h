#pragma once

#include <QWidget>

#include <vector>

class QHBoxLayout;
class QMenu;

namespace wendlore {

class AppState;
class IconButton;
class LabelButton;
class WebEditorController;
struct EditorCommand;
struct EditorMenu;

/// The formatting buttons of one editor: zoom, the block menu, toggles that show the format at the caret, and
/// menus.
class EditorToolbar final : public QWidget
{
    Q_OBJECT

public:
    EditorToolbar(AppState& state, WebEditorController& controller, QWidget* parent = nullptr);

private:
    void addZoomButtons();
    void addBlockMenu();
    void addToggles();
    void addMenu(const EditorMenu& menu);
    void addTableMenu();
    IconButton* addMenuButton(const EditorMenu& menu);
    void fill(QMenu& menu, const std::vector<EditorCommand>& commands);
    void showFormat();
    void exec(const EditorCommand& command);

    AppState& m_state;
    WebEditorController& m_controller;
    QHBoxLayout* m_row;
    LabelButton* m_block = nullptr;
    std::vector<IconButton*> m_toggles;
};

} // namespace wendlore
