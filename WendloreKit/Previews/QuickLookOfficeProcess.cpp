#include "Previews/QuickLookOfficeProcess.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QUrl>

#include <cerrno>
#include <csignal>
#include <cstddef>

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int pollInterval = 50; // milliseconds
constexpr rlim_t largestFile = 500'000'000;
constexpr rlim_t mostMemory = 4'000'000'000;
constexpr rlim_t mostSeconds = 120;

/// No macros, and nothing is fetched that a document refers to.
constexpr auto settings = R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry" xmlns:xs="http://www.w3.org/2001/XMLSchema"
 xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
<item oor:path="/org.openoffice.Office.Common/Security/Scripting"><prop oor:name="MacroSecurityLevel" oor:op="fuse"><value>3</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Security/Scripting"><prop oor:name="DisableMacrosExecution" oor:op="fuse"><value>true</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Security/Scripting"><prop oor:name="BlockUntrustedRefererLinks" oor:op="fuse"><value>true</value></prop></item>
<item oor:path="/org.openoffice.Office.Writer/Content/Update"><prop oor:name="Link" oor:op="fuse"><value>2</value></prop></item>
<item oor:path="/org.openoffice.Office.Calc/Content/Update"><prop oor:name="Link" oor:op="fuse"><value>2</value></prop></item>
</oor:items>
)";

bool writeSettings(const QString& profile)
{
    if (!QDir().mkpath(profile + u"/user"_s))
        return false;
    QFile file(profile + u"/user/registrymodifications.xcu"_s);
    return file.open(QIODevice::WriteOnly) && file.write(settings) > 0;
}

void limitTo(__rlimit_resource resource, rlim_t most)
{
    const rlimit limit{most, most};
    ::setrlimit(resource, &limit);
}

/// Refuses sockets that lead out of this computer. What the process starts has the same filter.
void refuseNetwork()
{
    constexpr auto call = offsetof(seccomp_data, nr);
    constexpr auto family = offsetof(seccomp_data, args); // the lower half of the first argument
    static sock_filter steps[] = {BPF_STMT(BPF_LD | BPF_W | BPF_ABS, call),
                                  BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_socket, 0, 3),
                                  BPF_STMT(BPF_LD | BPF_W | BPF_ABS, family),
                                  BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, AF_INET, 2, 0),
                                  BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, AF_INET6, 1, 0),
                                  BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
                                  BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EACCES)};
    const sock_fprog filter{std::size(steps), steps};
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter);
}

/// In the child: a group of its own, so that all of it can be ended, limits, and no network, not even to this
/// computer where the system lets a process give that up.
void confine()
{
    ::setpgid(0, 0);
    limitTo(RLIMIT_FSIZE, largestFile);
    limitTo(RLIMIT_AS, mostMemory);
    limitTo(RLIMIT_CPU, mostSeconds);
    limitTo(RLIMIT_CORE, 0);
    if (::unshare(CLONE_NEWNET) == -1)
        static_cast<void>(::unshare(CLONE_NEWUSER | CLONE_NEWNET));
    refuseNetwork();
}

QProcessEnvironment environmentIn(const QString& folder)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"HOME"_s, folder);
    environment.insert(u"TMPDIR"_s, folder);
    environment.insert(u"SAL_USE_VCLPLUGIN"_s, u"svp"_s);
    for (const QString& name : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"DBUS_SESSION_BUS_ADDRESS"_s})
        environment.remove(name);
    return environment;
}

} // namespace

bool runOfficeProgram(const QString& program, const QString& folder, const QString& document,
                      const QString& format, const QuickLookLimits& limits)
{
    const QString profile = folder + u"/profil"_s;
    if (program.isEmpty() || !writeSettings(profile))
        return false;
    QProcess process;
    process.setProcessEnvironment(environmentIn(folder));
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setChildProcessModifier(confine);
    process.start(program,
                  {u"-env:UserInstallation="_s + QUrl::fromLocalFile(profile).toString(QUrl::FullyEncoded),
                   u"--headless"_s, u"--norestore"_s, u"--nodefault"_s, u"--nologo"_s, u"--nolockcheck"_s,
                   u"--convert-to"_s, format, u"--outdir"_s, folder, document});
    if (!process.waitForStarted())
        return false;
    const auto group = static_cast<pid_t>(process.processId());
    while (!process.waitForFinished(pollInterval) && process.state() != QProcess::NotRunning) {
        if (limits.areReached())
            ::kill(-group, SIGKILL);
    }
    ::kill(-group, SIGKILL); // what it may have left behind
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0 && !limits.areReached();
}

} // namespace wendlore
