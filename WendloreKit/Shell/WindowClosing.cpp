#include "Shell/WindowClosing.h"

#include "Editor/EditorSession.h"

#include <QCloseEvent>
#include <QPointer>
#include <QWidget>

#include <utility>

namespace wendlore {

WindowClosing::WindowClosing(QWidget& window, EditorSession& session)
    : m_window(window)
    , m_session(session)
{}

bool WindowClosing::mayClose(QCloseEvent& event)
{
    if (m_step == Step::settled) {
        m_step = Step::notAsked;
        event.accept();
        return true;
    }
    event.ignore();
    if (std::exchange(m_step, Step::waiting) == Step::waiting)
        return false;
    const auto closeForGood = [this] {
        m_step = Step::settled;
        m_window.close();
    };
    m_session.settle([window = QPointer(&m_window), closeForGood] {
        // Perhaps at once, and this very event has to end first.
        if (window)
            QMetaObject::invokeMethod(window, closeForGood, Qt::QueuedConnection);
    });
    return false;
}

} // namespace wendlore
