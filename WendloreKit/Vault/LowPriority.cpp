#include "Vault/LowPriority.h"

#include <algorithm>
#include <sched.h>
#include <sys/resource.h>
#include <thread>

namespace wendlore {

namespace {

/// A third of what others get where they leave nothing: whoever looks at the result in the end is kept
/// waiting too.
constexpr int niceness = 5;

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
