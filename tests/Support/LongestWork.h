#pragma once

#include <QAbstractEventDispatcher>
#include <QObject>

#include <algorithm>
#include <ctime>
#include <utility>

namespace wendlore {

/// The longest that the event loop of this thread works on without looking for new events, in time of the
/// processor, of which other programs take none.
class LongestWork final : public QObject
{
public:
    LongestWork()
    {
        // Which of the two comes before the work differs between the event loops that there are.
        auto* dispatcher = QAbstractEventDispatcher::instance();
        connect(dispatcher, &QAbstractEventDispatcher::awake, this, &LongestWork::end);
        connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, &LongestWork::end);
    }

    /// What comes now is other work than what was done before.
    void end()
    {
        const double now = ownTime();
        m_longest = std::max(m_longest, now - std::exchange(m_start, now));
    }
    [[nodiscard]] double milliseconds() const { return m_longest; }

private:
    /// The processor's time that this thread has taken, in milliseconds.
    [[nodiscard]] static double ownTime()
    {
        timespec time = {};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
    }

    double m_start = ownTime();
    double m_longest = 0;
};

} // namespace wendlore
