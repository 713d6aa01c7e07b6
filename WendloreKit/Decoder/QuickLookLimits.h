#pragma once

#include <QDeadlineTimer>

#include <atomic>
#include <chrono>
#include <memory>

namespace wendlore {

/// How long the work on a preview may go on: until the view moves on, or its time is over. Copies share the
/// end.
class QuickLookLimits final
{
public:
    static constexpr std::chrono::seconds usualTime{10};

    explicit QuickLookLimits(std::chrono::milliseconds time = usualTime)
        : m_deadline(time)
    {}

    /// Ends the work, from any thread.
    void stop() const { *m_isStopped = true; }
    [[nodiscard]] bool isStopped() const { return *m_isStopped; }
    [[nodiscard]] bool areReached() const { return *m_isStopped || m_deadline.hasExpired(); }
    [[nodiscard]] std::chrono::milliseconds remainingTime() const
    {
        return std::chrono::milliseconds(m_deadline.remainingTime());
    }
    /// The same end with a time of its own.
    [[nodiscard]] QuickLookLimits withTime(std::chrono::milliseconds time) const
    {
        QuickLookLimits limits = *this;
        limits.m_deadline.setRemainingTime(time);
        return limits;
    }

private:
    std::shared_ptr<std::atomic<bool>> m_isStopped = std::make_shared<std::atomic<bool>>(false);
    QDeadlineTimer m_deadline;
};

} // namespace wendlore
