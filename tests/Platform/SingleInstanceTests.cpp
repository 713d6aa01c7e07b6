#include "Platform/SingleInstance.h"

#include "Fakes/ChildProcess.h"
#include "Support/PrivateBus.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QFile>
#include <QLocalSocket>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <thread>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

using Role = SingleInstance::Role;
using HandOver = SingleInstance::HandOver;

const QDBusConnection noBus(u"no such connection"_s);

/// A place for the socket of one test.
struct Place final
{
    QTemporaryDir folder;
    FileURL socket = FileURL::file(folder.filePath(u"run/instance.socket"_s));
};

/// A later start of the program, in a thread so that the first one can answer.
HandOver startLater(const QDBusConnection& bus, const FileURL& socket, const QList<QUrl>& addresses)
{
    HandOver result = HandOver::refused;
    bool isDone = false;
    std::thread later([&] {
        SingleInstance second(bus, socket);
        if (second.claim() == Role::second)
            result = second.handOver(addresses);
        QMetaObject::invokeMethod(QCoreApplication::instance(), [&isDone] { isDone = true; });
    });
    const bool hasEnded = QTest::qWaitFor([&isDone] { return isDone; }, 30'000);
    later.join();
    return hasEnded ? result : HandOver::refused;
}

} // namespace

class SingleInstanceTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutABusTheSecondHandsItsArgumentsOver()
    {
        const Place place;
        SingleInstance first(noBus, place.socket);
        QCOMPARE(first.claim(), Role::first);
        QSignalSpy opened(&first, &SingleInstance::opened);
        const QList<QUrl> addresses{QUrl(u"file:///b/M%C3%B6te%20%25.md"_s),
                                    QUrl(u"wendlore://x?data=%7B%7D"_s)};

        QCOMPARE(startLater(noBus, place.socket, addresses), HandOver::taken);

        QCOMPARE(opened.size(), 1);
        QCOMPARE(opened[0][0].value<QList<QUrl>>(), addresses);
    }

    void aSecondWithoutArgumentsShowsTheFirst()
    {
        const Place place;
        SingleInstance first(noBus, place.socket);
        QCOMPARE(first.claim(), Role::first);
        const QSignalSpy activated(&first, &SingleInstance::activated);

        QCOMPARE(startLater(noBus, place.socket, {}), HandOver::taken);

        QCOMPARE(activated.size(), 1);
    }

    void aSocketThatWasLeftByAKilledOneIsTakenOver()
    {
        const Place place;
        ChildProcess killed([&place] {
            auto* first = new SingleInstance(noBus, place.socket); // not deleted: the process just ends
            return QByteArray(first->claim() == Role::first ? "first" : "second");
        });
        QCOMPARE(killed.finish().said, QByteArray("first"));
        QVERIFY(QFile::exists(place.socket.path()));

        SingleInstance next(noBus, place.socket);

        QCOMPARE(next.claim(), Role::first);
        QCOMPARE(startLater(noBus, place.socket, {}), HandOver::taken);
    }

    void theNextOneIsFirstAfterTheFirstHasEnded()
    {
        const Place place;
        {
            SingleInstance first(noBus, place.socket);
            QCOMPARE(first.claim(), Role::first);
        }

        SingleInstance next(noBus, place.socket);

        QCOMPARE(next.claim(), Role::first);
    }

    void aPlaceThatIsTooLongForASocketDoesNotStopTheProgram()
    {
        const QTemporaryDir folder;
        const QString longName(120, u'x');
        SingleInstance first(noBus, FileURL::file(folder.filePath(longName + u"/socket"_s)));

        QCOMPARE(first.claim(), Role::first);
    }

    void nonsenseOnTheSocketDoesNoHarm()
    {
        const Place place;
        SingleInstance first(noBus, place.socket);
        QCOMPARE(first.claim(), Role::first);
        const QSignalSpy opened(&first, &SingleInstance::opened);
        QLocalSocket caller;
        caller.connectToServer(place.socket.path());
        QVERIFY(caller.waitForConnected());

        caller.write("\xff\xfe{no json\n");

        QTRY_VERIFY(caller.canReadLine());
        QVERIFY(opened.isEmpty());
    }

    void overTheBusTheSecondHandsItsArgumentsOver()
    {
        PrivateBus bus;
        const Place firstPlace;
        const Place secondPlace;
        SingleInstance first(bus.connection(u"first"_s), firstPlace.socket);
        QCOMPARE(first.claim(), Role::first);
        QSignalSpy opened(&first, &SingleInstance::opened);
        const QSignalSpy activated(&first, &SingleInstance::activated);
        const QDBusConnection later = bus.connection(u"second"_s);
        const QList<QUrl> addresses{QUrl(u"file:///b/%E5r.md"_s)};

        QCOMPARE(startLater(later, secondPlace.socket, addresses), HandOver::taken);
        QCOMPARE(opened.size(), 1);
        QCOMPARE(opened[0][0].value<QList<QUrl>>(), addresses);
        QCOMPARE(startLater(later, secondPlace.socket, {}), HandOver::taken);
        QCOMPARE(activated.size(), 1);
    }

    void theDesktopCallsItByItsInterface_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<QVariantList>("arguments");
        QTest::addColumn<bool>("opens");
        const QVariantMap data{{u"activation-token"_s, u"token-1"_s}};
        QTest::newRow("activate") << u"Activate"_s << QVariantList{data} << false;
        QTest::newRow("open") << u"Open"_s << QVariantList{QStringList{u"file:///b/a.md"_s}, data} << true;
        QTest::newRow("action") << u"ActivateAction"_s << QVariantList{u"ny"_s, QVariantList(), data}
                                << false;
    }

    void theDesktopCallsItByItsInterface()
    {
        QFETCH(const QString, method);
        QFETCH(const QVariantList, arguments);
        QFETCH(const bool, opens);
        PrivateBus bus;
        const Place place;
        SingleInstance first(bus.connection(u"first"_s), place.socket);
        QCOMPARE(first.claim(), Role::first);
        const QSignalSpy opened(&first, &SingleInstance::opened);
        const QSignalSpy activated(&first, &SingleInstance::activated);
        qunsetenv("XDG_ACTIVATION_TOKEN");

        QDBusMessage call = QDBusMessage::createMethodCall(u"example.wendlores.Wendlores"_s,
                                                           u"/example/wendlores/Wendlores"_s,
                                                           u"org.freedesktop.Application"_s, method);
        call.setArguments(arguments);
        QDBusPendingCallWatcher answer(bus.connection(u"desktop"_s).asyncCall(call));
        QTRY_VERIFY(answer.isFinished());

        QVERIFY2(!answer.isError(), qPrintable(answer.error().message()));
        QCOMPARE(opened.size(), opens ? 1 : 0);
        QCOMPARE(activated.size(), opens ? 0 : 1);
        QCOMPARE(qgetenv("XDG_ACTIVATION_TOKEN"), QByteArray("token-1"));
        qunsetenv("XDG_ACTIVATION_TOKEN");
    }

    void aFirstWithoutABusIsFoundByOneThatHasOne()
    {
        PrivateBus bus;
        const Place place;
        SingleInstance first(noBus, place.socket);
        QCOMPARE(first.claim(), Role::first);
        const QSignalSpy activated(&first, &SingleInstance::activated);

        QCOMPARE(startLater(bus.connection(u"later"_s), place.socket, {}), HandOver::taken);

        QCOMPARE(activated.size(), 1);
    }
};

QTEST_GUILESS_MAIN(SingleInstanceTests)
#include "SingleInstanceTests.moc"
