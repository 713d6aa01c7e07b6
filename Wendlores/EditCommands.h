#pragma once

#include <QObject>

#include <vector>

class QMenu;

namespace wendlore {

class WebEditorController;

/// The usual commands for text. They go to whatever has the keyboard focus: a field of the window, or else
/// the editor page. While the menu is open it shows which of them would do anything there.
class EditCommands final : public QObject
{
    Q_OBJECT

public:
    /// What changes a text or looks through it, and how the note is shown.
    enum class Part { edit, view };

    EditCommands(WebEditorController& controller, QObject* parent = nullptr);

    void addTo(QMenu& menu, Part part);

private:
    struct Command;

    [[nodiscard]] static const std::vector<Command>& commands();
    [[nodiscard]] bool isPossible(const Command& command) const;
    void run(const Command& command);
    void execInNote(const Command& command);

    WebEditorController& m_controller;
};

} // namespace wendlore
