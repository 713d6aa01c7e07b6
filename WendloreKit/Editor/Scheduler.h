#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace wendlore {

/// A task that was put off; destroying or cancelling it before it ran makes it never run.
class ScheduledTask
{
public:
    virtual ~ScheduledTask() = default;
};

/// Runs tasks later on the main thread. Tests drive one with a clock of their own.
class Scheduler
{
public:
    virtual ~Scheduler() = default;

    /// Runs `work` on the main thread once `delay` has passed, unless the returned task is destroyed before.
    [[nodiscard]] virtual std::unique_ptr<ScheduledTask> after(std::chrono::milliseconds delay,
                                                               std::function<void()> work) = 0;
    /// Runs `work` on a background thread, and then what it returned on the main thread; that second step is
    /// dropped when the returned task is destroyed before.
    [[nodiscard]] virtual std::unique_ptr<ScheduledTask>
    inBackground(std::function<std::function<void()>()> work) = 0;
};

} // namespace wendlore
