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

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace wendlore
