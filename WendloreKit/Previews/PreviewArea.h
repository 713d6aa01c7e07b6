#pragma once

#include "Vault/FileURL.h"

#include <QWidget>

#include <optional>

class QStackedWidget;

namespace wendlore {

class AppState;
class EditorView;
class FileOpenElsewhereView;

/// Shows the selected file in the view that suits it: the editor for notes, else a viewer that is made for
/// that file and goes with it. What the user has to hear about a note stands above, also when another kind of
/// file is shown by then.
class PreviewArea final : public QWidget
{
    Q_OBJECT

public:
    /// Where the area stands: the main window asks for a bucket while none is open, and does not show what
    /// has a window of its own.
    enum class Host { mainWindow, embedded };
    enum class Shown { emptyVault, placeholder, elsewhere, editor, viewer };

    PreviewArea(AppState& state, Host host, QWidget* parent = nullptr);

    [[nodiscard]] Shown shown() const { return m_shown; }
    /// The view that shows the selected file.
    [[nodiscard]] QWidget* currentWidget() const;
    [[nodiscard]] EditorView& editor() const { return *m_editor; }
    /// Gives the keyboard to what is shown.
    void takeFocus();

Q_SIGNALS:
    /// Another file, or another kind of view, is shown.
    void shownChanged();

private:
    void showSelection();
    [[nodiscard]] Shown viewForSelection() const;
    [[nodiscard]] QWidget* widgetFor(Shown shown);
    void makeViewer(const FileURL& file);
    void dropViewer();

    AppState& m_state;
    Host m_host;
    Shown m_shown = Shown::placeholder;
    QStackedWidget* m_stack;
    QWidget* m_empty;
    QWidget* m_placeholder;
    FileOpenElsewhereView* m_elsewhere;
    /// One for as long as the window: edits may still arrive for a note after another file was selected.
    EditorView* m_editor;
    QWidget* m_viewer = nullptr;
    std::optional<FileURL> m_viewedFile;
};

} // namespace wendlore
