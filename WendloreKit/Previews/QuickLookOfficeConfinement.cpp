#include "Previews/QuickLookOfficeConfinement.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <array>
#include <cerrno>

#include <sched.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr rlim_t largestFile = 500'000'000;
constexpr rlim_t mostMemory = 4'000'000'000;
constexpr rlim_t mostSeconds = 120;

constexpr std::array programs{"/usr",   "/bin", "/sbin",      "/lib",      "/lib32",
                              "/lib64", "/opt", "/nix/store", "/gnu/store"};
/// Settings of the system, and what is installed or computed for all: nothing of anybody's.
constexpr std::array tables{"/etc",     "/var/cache/fontconfig",   "/var/lib",    "/var/spool/libreoffice",
                            "/proc",    "/sys/devices/system/cpu", "/dev/random", "/dev/urandom",
                            "/dev/zero"};

constexpr std::array otherProcesses{
    SYS_ptrace,      SYS_process_vm_readv,  SYS_process_vm_writev, SYS_pidfd_open,
    SYS_pidfd_getfd, SYS_pidfd_send_signal, SYS_rt_sigqueueinfo,   SYS_kcmp};

void limitTo(__rlimit_resource resource, rlim_t most)
{
    const rlimit limit{most, most};
    ::setrlimit(resource, &limit);
}

/// The folder that the program is installed in, wherever somebody has unpacked it: its own lies below that.
QString installationOf(const QString& program)
{
    const QDir folder = QFileInfo(QFileInfo(program).canonicalFilePath()).dir();
    return folder.dirName() == u"program"_s ? folder.filePath(u".."_s) : program;
}

} // namespace

QuickLookOfficeConfinement::QuickLookOfficeConfinement(const QString& program, const QString& folder)
{
    for (const char* path : programs)
        m_files.leave(path, FileRules::Access::readAndRun);
    m_files.leave(QFile::encodeName(installationOf(program)), FileRules::Access::readAndRun);
    for (const char* path : tables)
        m_files.leave(path, FileRules::Access::read);
    for (const QString& path : {folder, u"/dev/null"_s})
        m_files.leave(QFile::encodeName(path), FileRules::Access::everything);

    // It listens for others of its kind in a folder that all share, and gives up where it cannot.
    for (const char* path : {"/tmp", "/var/tmp"})
        m_files.leave(path, FileRules::Access::makeSockets);

    m_calls.allowFor(SYS_socket, 0, AF_UNIX);
    m_calls.refuse(SYS_connect, EACCES);
    m_calls.refuseAll(otherProcesses);
    m_calls.refuseAdministration();
    m_calls.finish();
}

void QuickLookOfficeConfinement::apply() const
{
    // A group of its own, so that all of it can be ended.
    ::setpgid(0, 0);
    limitTo(RLIMIT_FSIZE, largestFile);
    limitTo(RLIMIT_AS, mostMemory);
    limitTo(RLIMIT_CPU, mostSeconds);
    limitTo(RLIMIT_CORE, 0);
    // Where the system lets a process give that up, there is no network at all.
    if (::unshare(CLONE_NEWNET) == -1)
        static_cast<void>(::unshare(CLONE_NEWUSER | CLONE_NEWNET));
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    m_files.apply();
    m_calls.apply();
}

} // namespace wendlore
