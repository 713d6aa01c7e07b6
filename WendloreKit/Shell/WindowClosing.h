#pragma once

class QCloseEvent;
class QWidget;

namespace wendlore {

class EditorView;

/// Closing a window in which a note is edited: the keys that were typed last are waited for and written
/// first. When what was typed can be kept nowhere, the user is asked before it is lost.
class WindowClosing final
{
public:
    WindowClosing(QWidget& window, EditorView& editor);

    /// Answers a window's close event. True when the window may go now; otherwise it is closed again by
    /// itself, once everything is written.
    [[nodiscard]] bool mayClose(QCloseEvent& event);

private:
    enum class Step { notAsked, waiting, settled };

    void settle();
    void didSettle();
    void askWhatToDo();
    void closeForGood();
    void stay();

    QWidget& m_window;
    EditorView& m_editor;
    Step m_step = Step::notAsked;
};

} // namespace wendlore
