#include "Decoder/CallFilter.h"

#include <array>
#include <cstddef>

#include <linux/audit.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

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

constexpr uint32_t refused(int error)
{
    return SECCOMP_RET_ERRNO | uint32_t(error);
}

} // namespace

CallFilter::CallFilter()
{
    add(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, arch));
    jump(BPF_JEQ, thisProcessor, 1, 0);
    give(SECCOMP_RET_KILL_PROCESS);
    add(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr));
    jump(BPF_JGE, olderCalls, 0, 1);
    give(refused(EPERM));
}

void CallFilter::refuse(long call, int error)
{
    jump(BPF_JEQ, uint32_t(call), 0, 1);
    give(refused(error));
}

void CallFilter::refuseAdministration()
{
    refuseAll(administration);
}

void CallFilter::refuseWith(long call, int argument, uint32_t bits)
{
    decide(call, argument, BPF_JSET, bits, false);
}

void CallFilter::allowWith(long call, int argument, uint32_t bits)
{
    decide(call, argument, BPF_JSET, bits, true);
}

void CallFilter::allowFor(long call, int argument, uint32_t value)
{
    decide(call, argument, BPF_JEQ, value, true);
}

void CallFilter::finish()
{
    give(SECCOMP_RET_ALLOW);
}

void CallFilter::apply() const
{
    if (thisProcessor == 0)
        return;
    // The kernel only reads the program; its interface is older than that word.
    const sock_fprog program{static_cast<unsigned short>(m_program.size()),
                             const_cast<sock_filter*>(m_program.data())};
    ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program);
}

void CallFilter::add(uint16_t code, uint32_t value)
{
    m_program.push_back({code, 0, 0, value});
}

void CallFilter::give(uint32_t answer)
{
    add(BPF_RET | BPF_K, answer);
}

/// Leaves out as many of the next steps as the outcome says.
void CallFilter::jump(uint16_t comparison, uint32_t value, uint8_t ifTrue, uint8_t ifFalse)
{
    m_program.push_back({uint16_t(BPF_JMP | comparison | BPF_K), ifTrue, ifFalse, value});
}

void CallFilter::decide(long call, int argument, uint16_t comparison, uint32_t value, bool allows)
{
    jump(BPF_JEQ, uint32_t(call), 0, 4);
    // The lower half comes first on both kinds of processor.
    add(BPF_LD | BPF_W | BPF_ABS, uint32_t(offsetof(seccomp_data, args) + size_t(argument) * 8));
    jump(comparison, value, allows ? 1 : 0, allows ? 0 : 1);
    give(refused(EPERM));
    give(SECCOMP_RET_ALLOW);
}

} // namespace wendlore
