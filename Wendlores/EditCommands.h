#pragma once

#include <QObject>

class QMenu;

namespace wendlore {

class WebEditorController;

/// The usual commands for text. They go to whatever has the keyboard focus: a field of the window, or else
/// the editor page.
class EditCommands final : public QObject
{
    Q_OBJECT

public:
    EditCommands(WebEditorController& controller, QObject* parent = nullptr);

    void addTo(QMenu& menu);

private:
    struct Command;

    void run(const Command& command);

    WebEditorController& m_controller;
};

} // namespace wendlore
