#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <vector>

class QMenu;
class QUndoStack;

namespace wendlore {

class WebEditorController;

/// The usual commands for text. They go to whatever has the keyboard focus: a field of the window, the files
/// that were moved, or else the editor page or the file that is shown in its place. While the menu is open it
/// shows which of them would do anything there, and what would be undone where that has a name.
class EditCommands final : public QObject
{
    Q_OBJECT

public:
    /// What changes a text or looks through it, and how the note is shown.
    enum class Part { edit, view };

    /// For `window`, which shows the note of `controller`, or files.
    EditCommands(WebEditorController& controller, const QWidget& window, QObject* parent = nullptr);

    void addTo(QMenu& menu, Part part);
    /// With the focus in `place`, undo and redo mean `moves`; both outlive the menu.
    void setMoves(QUndoStack& moves, const QWidget& place);

private:
    struct Command;

    [[nodiscard]] static const std::vector<Command>& commands();
    /// What the command goes to: the menu bar has the focus only while it is steered by keyboard.
    [[nodiscard]] QWidget* focus() const;
    /// The moves that the command would undo or redo; null when it means something else.
    [[nodiscard]] QUndoStack* movesFor(const Command& command) const;
    [[nodiscard]] QString titleOf(const Command& command) const;
    /// Whether the page is on screen: it keeps its note while another file is shown.
    [[nodiscard]] bool isNoteShown() const;
    [[nodiscard]] bool isPossible(const Command& command) const;
    /// What the command does with a file that is shown in place of the note; empty when it does nothing
    /// there.
    [[nodiscard]] std::function<void()> inFile(const Command& command) const;
    void run(const Command& command);
    void execInNote(const Command& command);
    /// The page's view; null where it has none.
    [[nodiscard]] QWidget* noteView() const;

    WebEditorController& m_controller;
    const QWidget& m_window;
    QUndoStack* m_moves = nullptr;
    const QWidget* m_movesPlace = nullptr;
    QPointer<QWidget> m_focusBeforeMenuBar;
};

} // namespace wendlore
