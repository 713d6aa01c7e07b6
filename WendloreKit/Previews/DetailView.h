#pragma once

#include <QWidget>

namespace wendlore {

class AppState;
class DetailToolbar;
class EditorView;
class PreviewArea;

/// The right column: the toolbar, and below it the selected file.
class DetailView final : public QWidget
{
    Q_OBJECT

public:
    explicit DetailView(AppState& state, QWidget* parent = nullptr);

    [[nodiscard]] EditorView& editor() const;
    /// Gives the keyboard to the selected file.
    void takeFocus();

private:
    void showTitle();

    AppState& m_state;
    DetailToolbar* m_toolbar;
    PreviewArea* m_preview;
};

} // namespace wendlore
