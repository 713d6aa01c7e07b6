#pragma once

#include <QWidget>

class QLabel;

namespace wendlore {

class EditorView;

/// Tells above the note that somebody else had changed it, until the user has pressed OK and goes on writing.
///
/// A conflict is found while the user writes on. A window that opened for it would take the keys, and the
/// first space among them would press its button.
class ConflictNotice final : public QWidget
{
    Q_OBJECT

public:
    explicit ConflictNotice(EditorView& editor, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void showNotice();
    void dismiss();

    EditorView& m_editor;
    QLabel* m_message;
};

} // namespace wendlore
