#include "Vault/LowPriority.h"

#include <QTest>

#include <sys/resource.h>
#include <thread>

using namespace wendlore;

namespace {

int ownNiceness()
{
    return ::getpriority(PRIO_PROCESS, 0);
}

} // namespace

class LowPriorityTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theWorkAndItsThreadsStandBackBehindOthers();
    void whoAskedForItKeepsItsPriority();
};

void LowPriorityTests::theWorkAndItsThreadsStandBackBehindOthers()
{
    const int before = ownNiceness();
    int during = before;
    int inThread = before;

    atLowPriority([&] {
        during = ownNiceness();
        std::jthread([&] { inThread = ownNiceness(); }).join();
    });

    QVERIFY(during > before || before >= 5);
    QCOMPARE(inThread, during);
}

void LowPriorityTests::whoAskedForItKeepsItsPriority()
{
    const int before = ownNiceness();
    bool wasRun = false;

    atLowPriority([&] { wasRun = true; });

    QVERIFY(wasRun);
    QCOMPARE(ownNiceness(), before);
}

QTEST_GUILESS_MAIN(LowPriorityTests)
#include "LowPriorityTests.moc"
