#pragma once

#include <QWidget>

namespace wendlore {

class AppState;

/// The editor's commands in a bar of their own, above the note.
class EditorBar final : public QWidget
{
    Q_OBJECT

public:
    explicit EditorBar(AppState& state, QWidget* parent = nullptr);

    /// Puts `title` at the bar's left end, and the commands at the other.
    void setTitle(QWidget& title);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace wendlore
