#pragma once

#include "Look/Sheet.h"

class QLineEdit;

namespace wendlore {

class WebEditorController;

/// Asks for the address of a video, which goes into the note.
class VideoPrompt final : public Sheet
{
    Q_OBJECT

public:
    explicit VideoPrompt(WebEditorController& controller, QWidget* parent = nullptr);

private:
    void insert();

    WebEditorController& m_controller;
    QLineEdit* m_promptText;
};

} // namespace wendlore
