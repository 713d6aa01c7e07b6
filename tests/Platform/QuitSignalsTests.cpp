#include "Platform/QuitSignals.h"

#include <QSignalSpy>
#include <QTest>

#include <csignal>

using namespace wendlore;

class QuitSignalsTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSystemsRequestsToEndArrive_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("logout") << SIGTERM;
        QTest::newRow("terminal closed") << SIGHUP;
        QTest::newRow("Ctrl+C") << SIGINT;
    }

    void theSystemsRequestsToEndArrive()
    {
        QFETCH(const int, signal);
        QuitSignals quitSignals;
        QSignalSpy requested(&quitSignals, &QuitSignals::quitRequested);

        std::raise(signal);

        QVERIFY(requested.wait());
        QCOMPARE(requested.count(), 1);
    }

    void afterwardsTheSignalsAreAsBefore()
    {
        {
            const QuitSignals quitSignals;
        }
        struct sigaction action = {};

        ::sigaction(SIGTERM, nullptr, &action);

        QVERIFY(action.sa_handler == SIG_DFL);
    }
};

QTEST_GUILESS_MAIN(QuitSignalsTests)
#include "QuitSignalsTests.moc"
