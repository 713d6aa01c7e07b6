#pragma once

#include "Vault/FileURL.h"

#include <QObject>
#include <QPointer>

#include <optional>

class QDialog;
class QWidget;

namespace wendlore {

class AppState;
class WebEditorController;

/// What the editor asks the user before it inserts something: which picture, which video, which link. What is
/// asked for one note is never inserted into another.
class EditorPrompts final : public QObject
{
    Q_OBJECT

public:
    /// Sheets belong to the window of `parent`.
    EditorPrompts(AppState& state, WebEditorController& controller, QWidget* parent);

    /// Lets the user choose a picture, copies it into the bucket and shows it in the note.
    void showImageImporter();
    void showVideoPrompt();
    void showLinkPrompt();

private:
    void show(QDialog* sheet);

    AppState& m_state;
    WebEditorController& m_controller;
    QWidget* m_parent;
    QPointer<QDialog> m_sheet;
};

} // namespace wendlore
