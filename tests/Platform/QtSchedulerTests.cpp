#include "Platform/QtScheduler.h"

#include <QElapsedTimer>
#include <QSemaphore>
#include <QTest>
#include <QThread>

#include <atomic>

using namespace std::chrono_literals;
using namespace wendlore;

class QtSchedulerTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void workRunsOnceAfterItsDelay();
    void earlierWorkRunsFirst();
    void destroyedTaskNeverRuns();
    void workMayDestroyItsOwnTask();
    void workMayScheduleItselfAgain();
    void taskMayOutliveItsScheduler();
    void backgroundWorkRunsElsewhereAndIsDeliveredHere();
    void nothingIsDeliveredBeforeTheCallerHoldsTheTask();
    void resultNobodyWaitsForIsDropped();
    void deliveryMayDestroyItsOwnTask();
    void slowWorkDoesNotHoldUpOtherWork();
    void endOfTheSchedulerWaitsForItsWork();
    void workThatHangsIsNotWaitedForForever();
};

void QtSchedulerTests::workRunsOnceAfterItsDelay()
{
    QtScheduler scheduler;
    int runs = 0;
    qint64 ranAt = 0;
    QElapsedTimer clock;
    clock.start();

    const auto task = scheduler.after(30ms, [&] {
        ++runs;
        ranAt = clock.elapsed();
    });

    QCOMPARE(runs, 0);
    QTRY_COMPARE(runs, 1);
    QVERIFY(ranAt >= 29);
    bool isLater = false;
    const auto later = scheduler.after(60ms, [&] { isLater = true; });
    QTRY_VERIFY(isLater);
    QCOMPARE(runs, 1);
}

void QtSchedulerTests::earlierWorkRunsFirst()
{
    QtScheduler scheduler;
    QList<int> order;

    const auto second = scheduler.after(40ms, [&] { order.append(2); });
    const auto first = scheduler.after(0ms, [&] { order.append(1); });

    QTRY_COMPARE(order, (QList{1, 2}));
}

void QtSchedulerTests::destroyedTaskNeverRuns()
{
    QtScheduler scheduler;
    bool hasRun = false;
    auto task = scheduler.after(0ms, [&] { hasRun = true; });

    task.reset();

    bool isLater = false;
    const auto later = scheduler.after(20ms, [&] { isLater = true; });
    QTRY_VERIFY(isLater);
    QVERIFY(!hasRun);
}

void QtSchedulerTests::workMayDestroyItsOwnTask()
{
    QtScheduler scheduler;
    std::unique_ptr<ScheduledTask> task;
    auto kept = std::make_shared<int>(0);

    task = scheduler.after(0ms, [&task, kept] {
        task.reset();
        ++*kept;
    });

    QTRY_COMPARE(*kept, 1);
    QTRY_COMPARE(kept.use_count(), 1);
}

void QtSchedulerTests::workMayScheduleItselfAgain()
{
    QtScheduler scheduler;
    std::unique_ptr<ScheduledTask> task;
    int runs = 0;
    std::function<void()> work = [&] {
        if (++runs < 3)
            task = scheduler.after(0ms, work);
    };

    task = scheduler.after(0ms, work);

    QTRY_COMPARE(runs, 3);
}

void QtSchedulerTests::taskMayOutliveItsScheduler()
{
    auto scheduler = std::make_unique<QtScheduler>();
    const auto task = scheduler->after(0ms, [] {});
    const auto background = scheduler->inBackground([] { return [] {}; });

    scheduler.reset();

    QVERIFY(task && background);
}

void QtSchedulerTests::nothingIsDeliveredBeforeTheCallerHoldsTheTask()
{
    QtScheduler scheduler;
    for (int round = 0; round < 2000; ++round) {
        int deliveries = 0;
        const auto task = scheduler.inBackground([&] { return [&] { ++deliveries; }; });
        QCOMPARE(deliveries, 0);
        while (deliveries == 0)
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
}

void QtSchedulerTests::backgroundWorkRunsElsewhereAndIsDeliveredHere()
{
    QtScheduler scheduler;
    QThread* worker = nullptr;
    QThread* receiver = nullptr;

    const auto task = scheduler.inBackground([&] {
        worker = QThread::currentThread();
        return [&] { receiver = QThread::currentThread(); };
    });

    QTRY_COMPARE(receiver, QThread::currentThread());
    QVERIFY(worker && worker != receiver);
}

void QtSchedulerTests::resultNobodyWaitsForIsDropped()
{
    QtScheduler scheduler;
    QSemaphore isDropped;
    bool wasDelivered = false;
    auto task = scheduler.inBackground([&] {
        isDropped.acquire();
        return [&] { wasDelivered = true; };
    });

    task.reset();
    isDropped.release();

    bool isLater = false;
    const auto later = scheduler.inBackground([&] { return [&] { isLater = true; }; });
    QTRY_VERIFY(isLater);
    QTest::qWait(0);
    QVERIFY(!wasDelivered);
}

void QtSchedulerTests::deliveryMayDestroyItsOwnTask()
{
    QtScheduler scheduler;
    std::unique_ptr<ScheduledTask> task;
    bool isDone = false;

    task = scheduler.inBackground([&] {
        return [&] {
            task.reset();
            isDone = true;
        };
    });

    QTRY_VERIFY(isDone);
}

void QtSchedulerTests::slowWorkDoesNotHoldUpOtherWork()
{
    QtScheduler scheduler;
    QSemaphore isOver;
    std::vector<std::unique_ptr<ScheduledTask>> slow;
    for (int number = 0; number < 3; ++number) {
        slow.push_back(scheduler.inBackground([&] {
            isOver.acquire();
            return [] {};
        }));
    }
    bool isDone = false;

    const auto quick = scheduler.inBackground([&] { return [&] { isDone = true; }; });

    QTRY_VERIFY(isDone);
    isOver.release(3);
}

void QtSchedulerTests::endOfTheSchedulerWaitsForItsWork()
{
    std::atomic_bool isOver = false;
    {
        QtScheduler scheduler;
        QSemaphore hasBegun;
        const auto task = scheduler.inBackground([&] {
            hasBegun.release();
            for (int time = 0; time < 10000; ++time)
                QThread::yieldCurrentThread();
            isOver = true;
            return [] {};
        });
        hasBegun.acquire();
    }

    QVERIFY(isOver);
}

void QtSchedulerTests::workThatHangsIsNotWaitedForForever()
{
    QtScheduler scheduler;
    QSemaphore isOver;
    const auto task = scheduler.inBackground([&] {
        isOver.acquire();
        return [] {};
    });

    QVERIFY(!scheduler.waitForWork(std::chrono::milliseconds(20)));

    isOver.release();
    QVERIFY(scheduler.waitForWork(std::chrono::minutes(1)));
}

QTEST_GUILESS_MAIN(QtSchedulerTests)
#include "QtSchedulerTests.moc"
