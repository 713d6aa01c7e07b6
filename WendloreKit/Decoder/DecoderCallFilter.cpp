#include "Decoder/DecoderCallFilter.h"

#include "Decoder/CallFilter.h"

#include <array>
#include <cerrno>

#include <fcntl.h>
#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace wendlore {

namespace {

constexpr std::array network{SYS_socket, SYS_socketpair, SYS_connect, SYS_bind,
                             SYS_listen, SYS_accept,     SYS_accept4};

constexpr std::array otherProcesses{SYS_execve,
                                    SYS_execveat,
                                    SYS_ptrace,
                                    SYS_process_vm_readv,
                                    SYS_process_vm_writev,
                                    SYS_kill,
                                    SYS_tkill,
                                    SYS_rt_sigqueueinfo,
                                    SYS_rt_tgsigqueueinfo,
                                    SYS_pidfd_open,
                                    SYS_pidfd_getfd,
                                    SYS_pidfd_send_signal,
                                    SYS_shmget,
                                    SYS_msgget,
                                    SYS_semget,
                                    SYS_mq_open,
                                    SYS_kcmp};

constexpr std::array changesOfFiles{SYS_renameat,    SYS_renameat2,    SYS_unlinkat,    SYS_mkdirat,
                                    SYS_linkat,      SYS_symlinkat,    SYS_mknodat,     SYS_truncate,
                                    SYS_fchmod,      SYS_fchmodat,     SYS_fchown,      SYS_fchownat,
                                    SYS_utimensat,   SYS_setxattr,     SYS_lsetxattr,   SYS_fsetxattr,
                                    SYS_removexattr, SYS_lremovexattr, SYS_fremovexattr};

#ifdef __x86_64__
/// The same, as they were called before.
constexpr std::array olderChanges{SYS_fork,   SYS_vfork, SYS_creat,   SYS_rename,   SYS_unlink, SYS_mkdir,
                                  SYS_rmdir,  SYS_link,  SYS_symlink, SYS_mknod,    SYS_chmod,  SYS_chown,
                                  SYS_lchown, SYS_utime, SYS_utimes,  SYS_futimesat};
#endif

constexpr uint32_t writing = O_WRONLY | O_RDWR | O_CREAT | O_TRUNC;

} // namespace

void filterDecoderCalls()
{
    CallFilter filter;
    filter.refuseAll(network);
    filter.refuseAll(otherProcesses);
    filter.refuseAll(changesOfFiles);
    filter.refuseAdministration();
    filter.refuseWith(SYS_openat, 2, writing);
    filter.refuse(SYS_openat2, ENOSYS); // what it is asked for lies where a filter cannot look
    // Threads are needed, processes are not; what the newer call makes cannot be seen either.
    filter.allowWith(SYS_clone, 0, CLONE_THREAD);
    filter.refuse(SYS_clone3, ENOSYS);
    // A process that gives up signals itself.
    filter.allowFor(SYS_tgkill, 0, uint32_t(::getpid()));
#ifdef __x86_64__
    filter.refuseAll(olderChanges);
    filter.refuseWith(SYS_open, 1, writing);
#endif
    filter.finish();
    filter.apply();
}

} // namespace wendlore
