#include "Editor/EditorSession.h"

#include "Editor/Scheduler.h"
#include "Editor/WebEditorController.h"

#include "State/AppState.h"

#include <QPointer>

using namespace std::chrono_literals;

namespace wendlore {

namespace {

/// A page on a busy machine can be that late with the last keys; one that hangs holds a closing window no
/// longer.
constexpr auto settleTimeOut = 10s;

} // namespace

void EditorSession::settle(std::function<void()> done)
{
    const int number = ++m_lastSettling;
    auto timeOut = m_appState.services().scheduler.after(settleTimeOut, [this, number] { settled(number); });
    m_settling[number] = {std::move(done), std::move(timeOut)};
    m_controller.drain([session = QPointer(this), number] {
        if (session)
            session->settled(number);
    });
}

void EditorSession::settled(int number)
{
    const auto waiting = m_settling.extract(number);
    if (!waiting)
        return;
    flush();
    waiting.mapped().done();
}

} // namespace wendlore
