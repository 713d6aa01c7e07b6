#include "Fakes/ChildProcess.h"

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <grp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace wendlore {

namespace {

bool writeText(const char* path, const QByteArray& text)
{
    const int file = ::open(path, O_WRONLY | O_CLOEXEC);
    const bool isWritten = ::write(file, text.constData(), size_t(text.size())) == text.size();
    return ::close(file) == 0 && isWritten;
}

/// Gives this process mounts of its own; an ordinary user stays the same one in there.
bool enterOwnMounts()
{
    if (isSuperuser())
        return ::unshare(CLONE_NEWNS) == 0;
    const QByteArray user = QByteArray::number(::geteuid());
    const QByteArray group = QByteArray::number(::getegid());
    return ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && writeText("/proc/self/setgroups", "deny") &&
           writeText("/proc/self/uid_map", user + ' ' + user + " 1") &&
           writeText("/proc/self/gid_map", group + ' ' + group + " 1");
}

} // namespace

ChildProcess::ChildProcess(const std::function<QByteArray()>& work)
{
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) == -1)
        qFatal("no pipe");
    m_process = ::fork();
    if (m_process == -1)
        qFatal("no process");
    if (m_process == 0) {
        ::close(ends[0]);
        const QByteArray said = work();
        const bool isSaid = ::write(ends[1], said.constData(), size_t(said.size())) == said.size();
        ::_exit(isSaid ? 0 : 1);
    }
    ::close(ends[1]);
    m_pipe = ends[0];
}

ChildProcess::~ChildProcess()
{
    if (m_process > 0) {
        kill();
        finish();
    }
}

ChildResult ChildProcess::finish()
{
    ChildResult result;
    char buffer[4096];
    ssize_t taken = 0;
    while ((taken = ::read(m_pipe, buffer, sizeof buffer)) > 0 || (taken < 0 && errno == EINTR))
        result.said.append(buffer, std::max<ssize_t>(taken, 0));
    ::close(m_pipe);
    int status = 0;
    while (::waitpid(m_process, &status, 0) == -1 && errno == EINTR) {
    }
    m_process = -1;
    result.hasExited = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return result;
}

bool ChildProcess::isRunning() const
{
    siginfo_t info = {};
    return m_process > 0 && ::waitid(P_PID, id_t(m_process), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           info.si_pid == 0;
}

void ChildProcess::kill() const
{
    ::kill(m_process, SIGKILL);
}

bool isSuperuser()
{
    return ::geteuid() == 0;
}

void becomeOrdinaryUser()
{
    if (isSuperuser() &&
        (::setgroups(0, nullptr) == -1 || ::setgid(ordinaryUser) == -1 || ::setuid(ordinaryUser) == -1))
        qFatal("cannot become an ordinary user");
}

bool mountSmallFileSystem(const QByteArray& path, qint64 bytes)
{
    const QByteArray options = "size=" + QByteArray::number(bytes);
    return enterOwnMounts() && ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount("tmpfs", path.constData(), "tmpfs", 0, options.constData()) == 0;
}

void limitRoom(const QByteArray& path, qint64 bytes)
{
    if (mountSmallFileSystem(path, bytes))
        return;
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {rlim_t(bytes), rlim_t(bytes)};
    if (::setrlimit(RLIMIT_FSIZE, &limit) == -1)
        qFatal("cannot limit the size of files");
}

} // namespace wendlore
