#include "Platform/QtScheduler.h"

#include <QPointer>
#include <QTimer>

#include <algorithm>

namespace wendlore {

namespace {

/// Enough that a read from a file server that does not answer leaves threads for the others.
constexpr int minimumThreads = 4;

class TimerTask final : public ScheduledTask
{
public:
    explicit TimerTask(QTimer* timer)
        : m_timer(timer)
    {}
    ~TimerTask() override
    {
        if (!m_timer)
            return;
        m_timer->stop();
        m_timer->deleteLater(); // its work may be what destroys this task
    }

private:
    QPointer<QTimer> m_timer;
};

/// Lives as long as somebody waits for the result.
class BackgroundTask final : public ScheduledTask
{
public:
    [[nodiscard]] std::weak_ptr<bool> token() const { return m_token; }

private:
    std::shared_ptr<bool> m_token = std::make_shared<bool>(true);
};

} // namespace

QtScheduler::QtScheduler()
{
    m_threads.setMaxThreadCount(std::max(minimumThreads, QThread::idealThreadCount()));
}

std::unique_ptr<ScheduledTask> QtScheduler::after(std::chrono::milliseconds delay, std::function<void()> work)
{
    auto* timer = new QTimer(&m_context);
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    QObject::connect(timer, &QTimer::timeout, timer, std::move(work));
    timer->start(delay);
    return std::make_unique<TimerTask>(timer);
}

std::unique_ptr<ScheduledTask> QtScheduler::inBackground(std::function<std::function<void()>()> work)
{
    auto task = std::make_unique<BackgroundTask>();
    // Queued: work that ends at once must not deliver before the caller holds the task.
    m_threads.start([this, work = std::move(work), token = task->token()] {
        QMetaObject::invokeMethod(
            &m_context,
            [token, deliver = work()] {
                if (!token.expired() && deliver)
                    deliver();
            },
            Qt::QueuedConnection);
    });
    return task;
}

bool QtScheduler::waitForWork(std::chrono::milliseconds patience)
{
    return m_threads.waitForDone(static_cast<int>(patience.count()));
}

} // namespace wendlore
