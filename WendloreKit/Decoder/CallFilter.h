#pragma once

#include <cerrno>
#include <cstdint>
#include <vector>

#include <linux/filter.h>

namespace wendlore {

/// A program for the kernel that looks at every call of a process, for good, and of everything that it
/// starts. What it says nothing of is let through. Made beforehand; does nothing on a kind of processor that
/// it does not know.
class CallFilter final
{
public:
    CallFilter();

    void refuse(long call, int error = EPERM);
    template <typename Calls>
    void refuseAll(const Calls& calls)
    {
        for (const long call : calls)
            refuse(call);
    }
    /// Refuses the calls that only administer a system.
    void refuseAdministration();
    /// Refuses the call when its argument has any of `bits`.
    void refuseWith(long call, int argument, uint32_t bits);
    /// Refuses the call unless its argument has any of `bits`.
    void allowWith(long call, int argument, uint32_t bits);
    /// Refuses the call unless its argument is `value`.
    void allowFor(long call, int argument, uint32_t value);
    /// Nothing more is said of calls.
    void finish();

    /// From here on the kernel looks at the calls of this process, which can gain no rights any more. Nothing
    /// but a call of the kernel, so it may stand between a fork and the start of a program.
    void apply() const;

private:
    void add(uint16_t code, uint32_t value);
    void give(uint32_t answer);
    void jump(uint16_t comparison, uint32_t value, uint8_t ifTrue, uint8_t ifFalse);
    void decide(long call, int argument, uint16_t comparison, uint32_t value, bool allows);

    std::vector<sock_filter> m_program;
};

} // namespace wendlore
