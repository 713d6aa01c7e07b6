#include "Decoder/DecoderCallFilter.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <fcntl.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace wendlore {

namespace {

#if defined(__x86_64__)
constexpr uint32_t thisProcessor = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr uint32_t thisProcessor = AUDIT_ARCH_AARCH64;
#else
constexpr uint32_t thisProcessor = 0;
#endif

/// From here on the numbers of one kind of processor mean its older calls.
constexpr uint32_t olderCalls = 0x40000000;

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

constexpr std::array administration{SYS_bpf,
                                    SYS_perf_event_open,
                                    SYS_userfaultfd,
                                    SYS_io_uring_setup,
                                    SYS_io_uring_enter,
                                    SYS_keyctl,
                                    SYS_add_key,
                                    SYS_request_key,
                                    SYS_unshare,
                                    SYS_setns,
                                    SYS_mount,
                                    SYS_umount2,
                                    SYS_pivot_root,
                                    SYS_chroot,
                                    SYS_open_tree,
                                    SYS_move_mount,
                                    SYS_fsopen,
                                    SYS_init_module,
                                    SYS_finit_module,
                                    SYS_kexec_load,
                                    SYS_open_by_handle_at};

#ifdef __x86_64__
/// The same, as they were called before.
constexpr std::array olderChanges{SYS_fork,   SYS_vfork, SYS_creat,   SYS_rename,   SYS_unlink, SYS_mkdir,
                                  SYS_rmdir,  SYS_link,  SYS_symlink, SYS_mknod,    SYS_chmod,  SYS_chown,
                                  SYS_lchown, SYS_utime, SYS_utimes,  SYS_futimesat};
#endif

constexpr uint32_t writing = O_WRONLY | O_RDWR | O_CREAT | O_TRUNC;

/// A program for the kernel, which looks at every call. What it says nothing of is let through.
class CallFilter final
{
public:
    CallFilter()
    {
        add(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, arch));
        jump(BPF_JEQ, thisProcessor, 1, 0);
        give(SECCOMP_RET_KILL_PROCESS);
        add(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr));
        jump(BPF_JGE, olderCalls, 0, 1);
        give(refused(EPERM));
    }

    void refuse(long call, int error = EPERM)
    {
        jump(BPF_JEQ, uint32_t(call), 0, 1);
        give(refused(error));
    }
    template <typename Calls>
    void refuseAll(const Calls& calls)
    {
        for (const long call : calls)
            refuse(call);
    }
    /// Refuses the call when its argument has any of `bits`.
    void refuseWith(long call, int argument, uint32_t bits) { decide(call, argument, BPF_JSET, bits, false); }
    /// Refuses the call unless its argument has any of `bits`.
    void allowWith(long call, int argument, uint32_t bits) { decide(call, argument, BPF_JSET, bits, true); }
    /// Refuses the call unless its argument is `value`.
    void allowFor(long call, int argument, uint32_t value) { decide(call, argument, BPF_JEQ, value, true); }

    /// From here on the kernel looks at the calls.
    void apply()
    {
        give(SECCOMP_RET_ALLOW);
        const sock_fprog program{static_cast<unsigned short>(m_program.size()), m_program.data()};
        ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program);
    }

private:
    static constexpr uint32_t refused(int error) { return SECCOMP_RET_ERRNO | uint32_t(error); }

    void add(uint16_t code, uint32_t value) { m_program.push_back({code, 0, 0, value}); }
    void give(uint32_t answer) { add(BPF_RET | BPF_K, answer); }
    /// Leaves out as many of the next steps as the outcome says.
    void jump(uint16_t comparison, uint32_t value, uint8_t ifTrue, uint8_t ifFalse)
    {
        m_program.push_back({uint16_t(BPF_JMP | comparison | BPF_K), ifTrue, ifFalse, value});
    }
    void decide(long call, int argument, uint16_t comparison, uint32_t value, bool allows)
    {
        jump(BPF_JEQ, uint32_t(call), 0, 4);
        // The lower half comes first on both kinds of processor.
        add(BPF_LD | BPF_W | BPF_ABS, uint32_t(offsetof(seccomp_data, args) + size_t(argument) * 8));
        jump(comparison, value, allows ? 1 : 0, allows ? 0 : 1);
        give(refused(EPERM));
        give(SECCOMP_RET_ALLOW);
    }

    std::vector<sock_filter> m_program;
};

} // namespace

void filterDecoderCalls()
{
    if (thisProcessor == 0)
        return;
    CallFilter filter;
    filter.refuseAll(network);
    filter.refuseAll(otherProcesses);
    filter.refuseAll(changesOfFiles);
    filter.refuseAll(administration);
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
    filter.apply();
}

} // namespace wendlore
