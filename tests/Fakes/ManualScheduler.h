#pragma once

#include "Editor/Scheduler.h"

#include <vector>

namespace wendlore {

/// A scheduler with a clock of its own: nothing runs until a test moves the time on or lets background work
/// finish.
class ManualScheduler final : public Scheduler
{
public:
    ManualScheduler();
    ~ManualScheduler() override;

    [[nodiscard]] std::unique_ptr<ScheduledTask> after(std::chrono::milliseconds delay,
                                                       std::function<void()> work) override;
    [[nodiscard]] std::unique_ptr<ScheduledTask>
    inBackground(std::function<std::function<void()>()> work) override;

    /// Moves the clock on and runs, in order of their times, the tasks that come due.
    void advance(std::chrono::milliseconds time);
    /// Does the background work that was asked for so far, and delivers the results of what was not dropped.
    void finishBackgroundWork();
    /// Does the oldest background work only; false when there is none.
    bool finishNextBackgroundWork();

    [[nodiscard]] std::chrono::milliseconds now() const;
    [[nodiscard]] int pendingTasks() const;
    [[nodiscard]] int pendingBackgroundWork() const;

private:
    struct State;
    class Task;

    std::shared_ptr<State> m_state;
};

} // namespace wendlore
