#pragma once

#include "Editor/Scheduler.h"

#include <QObject>
#include <QThreadPool>

#include <chrono>

namespace wendlore {

/// Runs tasks by the event loop of the thread that it lives in, and background work on threads of its own,
/// which have ended when it is gone.
class QtScheduler final : public Scheduler
{
public:
    QtScheduler();

    [[nodiscard]] std::unique_ptr<ScheduledTask> after(std::chrono::milliseconds delay,
                                                       std::function<void()> work) override;
    [[nodiscard]] std::unique_ptr<ScheduledTask>
    inBackground(std::function<std::function<void()>()> work) override;

    /// Waits for the work that is under way, as long as `patience`; false when some of it still goes on.
    [[nodiscard]] bool waitForWork(std::chrono::milliseconds patience);

private:
    QObject m_context;
    QThreadPool m_threads;
};

} // namespace wendlore
