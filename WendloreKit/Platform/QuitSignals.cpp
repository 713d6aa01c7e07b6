#include "Platform/QuitSignals.h"

#include <QGuiApplication>
#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace wendlore {

namespace {

constexpr int watched[] = {SIGTERM, SIGHUP, SIGINT};
/// Where the signal's arrival is written to; all that a signal may safely do.
volatile std::sig_atomic_t writeEnd = -1;

void noteSignal(int)
{
    const int error = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(writeEnd, &byte, 1);
    errno = error;
}

void handle(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : watched)
        ::sigaction(signal, &action, nullptr);
}

} // namespace

QuitSignals::QuitSignals(QObject* parent)
    : QObject(parent)
{
    if (::pipe2(m_pipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    writeEnd = m_pipe[1];
    auto* notifier = new QSocketNotifier(m_pipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char bytes[16];
        if (::read(m_pipe[0], bytes, sizeof bytes) <= 0)
            return;
        QGuiApplication::sync(); // keys that were pressed before are heard before
        Q_EMIT quitRequested();
    });
    handle(&noteSignal);
}

QuitSignals::~QuitSignals()
{
    if (m_pipe[0] < 0)
        return;
    handle(SIG_DFL);
    writeEnd = -1;
    for (const int end : m_pipe)
        ::close(end);
}

} // namespace wendlore
