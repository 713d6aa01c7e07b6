#pragma once

#include <QWidget>

class QStackedWidget;

namespace wendlore {

class AppState;
class DetailToolbar;
class EditorView;
class FileCard;
class FileOpenElsewhereView;

/// The right column: the toolbar, and below it the viewer that suits the selected file.
class DetailView final : public QWidget
{
    Q_OBJECT

public:
    explicit DetailView(AppState& state, QWidget* parent = nullptr);

    [[nodiscard]] EditorView& editor() const { return *m_editor; }

private:
    void showSelection();
    void showTitle();
    [[nodiscard]] QWidget* viewForSelection();

    AppState& m_state;
    DetailToolbar* m_toolbar;
    QStackedWidget* m_stack;
    QWidget* m_empty;
    QWidget* m_placeholder;
    /// One for as long as the window: edits may still arrive for a note after another file was selected.
    EditorView* m_editor;
    FileCard* m_card;
    FileOpenElsewhereView* m_elsewhere;
};

} // namespace wendlore
