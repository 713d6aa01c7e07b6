#pragma once

#include <QWidget>

class QStackedWidget;

namespace wendlore {

class AppState;
class DetailToolbar;
class EditorView;
class FileCard;
class QuickLookView;

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
    /// Makes the generic view of the selected file, and drops the one of the file before.
    void showGenericView(bool isWanted);

    AppState& m_state;
    DetailToolbar* m_toolbar;
    QStackedWidget* m_stack;
    QWidget* m_empty;
    QWidget* m_placeholder;
    /// One for as long as the window: edits may still arrive for a note after another file was selected.
    EditorView* m_editor;
    FileCard* m_card;
    /// Made for one file; it goes with it.
    QuickLookView* m_generic = nullptr;
};

} // namespace wendlore
