#include "Vault/LowPriority.h"

#include <algorithm>
#include <sched.h>
#include <sys/resource.h>
#include <thread>

namespace wendlore {

namespace {

constexpr int niceness = 10;

} // namespace

void atLowPriority(const std::function<void()>& work)
{
    // A thread of its own: what was lowered here can only be raised again by those who may.
    std::jthread([&work] {
        const sched_param ordinary{};
        ::sched_setscheduler(0, SCHED_BATCH, &ordinary);
        ::setpriority(PRIO_PROCESS, 0,
                      std::max(::getpriority(PRIO_PROCESS, 0), niceness)); // of this thread only
        work();
    }).join();
}

} // namespace wendlore
