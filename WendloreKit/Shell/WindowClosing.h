#pragma once

class QCloseEvent;
class QWidget;

namespace wendlore {

class EditorSession;

/// Closing a window in which a note is edited: the keys that were typed last are waited for and written
/// first.
class WindowClosing final
{
public:
    WindowClosing(QWidget& window, EditorSession& session);

    /// Answers a window's close event. True when the window may go now; otherwise it is closed again by
    /// itself, once everything is written.
    [[nodiscard]] bool mayClose(QCloseEvent& event);

private:
    enum class Step { notAsked, waiting, settled };

    QWidget& m_window;
    EditorSession& m_session;
    Step m_step = Step::notAsked;
};

} // namespace wendlore
