#include "Fakes/Bucket.h"
#include "Platform/SettingsFile.h"
#include "Support/EngineTest.h"
#include "Support/PrivateBus.h"
#include "Support/ProgramHome.h"
#include "Typography/TypographyTheme.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// A user's home, on a session bus or without one, and the program as this user starts it.
class User final
{
public:
    enum class Session { bus, noBus };

    explicit User(Session session)
    {
        if (session == Session::bus)
            m_bus = std::make_unique<PrivateBus>();
    }

    [[nodiscard]] std::unique_ptr<QProcess> start(const QStringList& arguments) const
    {
        auto program = std::make_unique<QProcess>();
        QProcessEnvironment environment = m_home.environment(u"offscreen"_s);
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_bus ? m_bus->address() : u"disabled:"_s);
        program->setProcessEnvironment(environment);
        program->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program->start(qEnvironmentVariable("WENDLORE_BIN_DIR") + u"/wendlores"_s, arguments);
        return program;
    }
    /// Starts the program beside one that runs; gives its exit code.
    [[nodiscard]] int startAgain(const QStringList& arguments) const
    {
        const auto program = start(arguments);
        if (!program->waitForFinished(patience))
            return -1;
        return program->exitCode();
    }
    [[nodiscard]] SettingsFile settings() const
    {
        return SettingsFile(FileURL::file(m_home.filePath(u"wendlores/settings.json"_s)));
    }
    /// Waits until the settings say that `note` of the bucket is selected.
    [[nodiscard]] bool hasSelected(const Bucket& bucket, const QString& note) const
    {
        return QTest::qWaitFor(
            [&] {
                const auto states = settings().data(u"wendloreVaultUIState"_s).value_or(QByteArray());
                const QJsonObject state = QJsonDocument::fromJson(states)[bucket.root().path()].toObject();
                return state["selectedFilePath"_L1].toString() == bucket.file(note).path();
            },
            patience);
    }
    [[nodiscard]] PrivateBus& bus() const { return *m_bus; }

private:
    ProgramHome m_home;
    std::unique_ptr<PrivateBus> m_bus;
};

/// The command lines of the processes that `program` has started and that have not ended, joined.
QByteArray childrenOf(const QProcess& program)
{
    QByteArray commands;
    const QDir threads(u"/proc/%1/task"_s.arg(program.processId()));
    for (const QString& thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile children(threads.filePath(thread + u"/children"_s));
        if (!children.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray& child : children.readAll().split(' ')) {
            QFile command(u"/proc/%1/cmdline"_s.arg(QString::fromLatin1(child)));
            if (command.open(QIODevice::ReadOnly))
                commands += command.readAll() + '\n';
        }
    }
    return commands;
}

/// Asks the program to end, as the desktop does when the user logs out.
int endOf(QProcess& program)
{
    program.terminate();
    return program.waitForFinished(patience) && program.exitStatus() == QProcess::NormalExit
               ? program.exitCode()
               : -1;
}

} // namespace

class RunningProgramTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSecondStartHandsItsFileToTheFirst_data()
    {
        QTest::addColumn<User::Session>("session");
        QTest::newRow("over the session bus") << User::Session::bus;
        QTest::newRow("without a session bus") << User::Session::noBus;
    }

    void aSecondStartHandsItsFileToTheFirst()
    {
        QFETCH(const User::Session, session);
        const Bucket bucket({{"A.md", "a"}, {"Möte 1.md", "b"}});
        const User user(session);
        const auto first = user.start({bucket.file(u"A.md"_s).path()});
        QVERIFY(user.hasSelected(bucket, u"A.md"_s));

        QCOMPARE(user.startAgain({bucket.file(u"Möte 1.md"_s).path()}), 0);

        QVERIFY(user.hasSelected(bucket, u"Möte 1.md"_s));
        QCOMPARE(user.startAgain({}), 0);
        QCOMPARE(user.startAgain({u"no/such/note.md"_s}), 1);
        QCOMPARE(first->state(), QProcess::Running);
        QCOMPARE(endOf(*first), 0);
    }

    /// Every one of them is loaded and asked with the first picture file, before the note is on the screen.
    void startingLoadsNoImagePlugins()
    {
        const Bucket bucket({{"A.md", "a"}});
        const User user(User::Session::noBus);
        const auto program = user.start({bucket.file(u"A.md"_s).path()});
        QVERIFY(user.hasSelected(bucket, u"A.md"_s));
        QCOMPARE(user.startAgain({}), 0); // its window stands, as it answers

        QFile maps(u"/proc/%1/maps"_s.arg(program->processId()));
        QVERIFY(maps.open(QIODevice::ReadOnly));
        const QByteArray loaded = maps.readAll();
        QVERIFY(loaded.contains("libQt6Gui"));
        QVERIFY(!loaded.contains("/imageformats/"));
        QCOMPARE(endOf(*program), 0);
    }

    /// What the engine itself says to the user, such as that a site cannot be reached.
    void theEngineSpeaksSwedishOnAnyDesktop()
    {
        const Bucket bucket({{"A.md", "a"}});
        const User user(User::Session::noBus);
        const auto program = user.start({bucket.file(u"A.md"_s).path()});
        QVERIFY(user.hasSelected(bucket, u"A.md"_s));
        QCOMPARE(user.startAgain({}), 0);

        QTRY_VERIFY_WITH_TIMEOUT(childrenOf(*program).contains("--lang=sv"), patience);
        QCOMPARE(endOf(*program), 0);
    }

    void twoUsersOfOneBucketLeaveItAsItIs()
    {
        const Bucket bucket({{"A.md", "a\r\n"}, {"B.md", "* b"}});
        const User anna(User::Session::noBus);
        const User bo(User::Session::noBus);
        const auto first = anna.start({bucket.file(u"A.md"_s).path()});
        const auto second = bo.start({bucket.file(u"A.md"_s).path()});
        QVERIFY(anna.hasSelected(bucket, u"A.md"_s));
        QVERIFY(bo.hasSelected(bucket, u"A.md"_s));
        QCOMPARE(bo.startAgain({bucket.file(u"B.md"_s).path()}), 0);
        QVERIFY(bo.hasSelected(bucket, u"B.md"_s));

        QCOMPARE(anna.startAgain({}), 0);
        QCOMPARE(endOf(*first), 0);
        QCOMPARE(endOf(*second), 0);
        QCOMPARE(bucket.names(), QStringList({u"A.md"_s, u"B.md"_s}));
        QCOMPARE(bucket.read(u"A.md"_s), "a\r\n");
        QCOMPARE(bucket.read(u"B.md"_s), "* b");
    }

    void linksAndFilesArriveFromTheDesktop()
    {
        const Bucket bucket({{"A.md", "a"}, {"B.md", "b"}});
        const User user(User::Session::bus);
        const auto program = user.start({bucket.file(u"A.md"_s).path()});
        QVERIFY(user.hasSelected(bucket, u"A.md"_s));
        const QByteArray theme = *TypographyTheme::standard().toJson();

        QCOMPARE(user.startAgain(
                     {u"wendlore://apply-theme?data="_s + QString::fromLatin1(theme.toPercentEncoding())}),
                 0);
        QVERIFY(QTest::qWaitFor(
            [&] { return user.settings().data(u"wendloreTypographyTheme"_s).has_value(); }, patience));

        QDBusMessage open = QDBusMessage::createMethodCall(u"example.wendlores.Wendlores"_s,
                                                           u"/example/wendlores/Wendlores"_s,
                                                           u"org.freedesktop.Application"_s, u"Open"_s);
        open << QStringList{QUrl::fromLocalFile(bucket.file(u"B.md"_s).path()).toString()} << QVariantMap();
        QDBusPendingCallWatcher answer(user.bus().connection(u"file manager"_s).asyncCall(open));
        QTRY_VERIFY_WITH_TIMEOUT(answer.isFinished(), patience);
        QVERIFY2(!answer.isError(), qPrintable(answer.error().message()));
        QVERIFY(user.hasSelected(bucket, u"B.md"_s));
        QCOMPARE(endOf(*program), 0);
    }

    void aProgramThatWasKilledDoesNotStopTheNext()
    {
        const Bucket bucket({{"A.md", "a"}, {"B.md", "b"}});
        const User user(User::Session::noBus);
        const auto killed = user.start({bucket.file(u"A.md"_s).path()});
        QVERIFY(user.hasSelected(bucket, u"A.md"_s));
        killed->kill();
        QVERIFY(killed->waitForFinished(patience));

        const auto next = user.start({bucket.file(u"B.md"_s).path()});

        QVERIFY(user.hasSelected(bucket, u"B.md"_s));
        QCOMPARE(next->state(), QProcess::Running);
        QCOMPARE(endOf(*next), 0);
    }
};

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(RunningProgramTests)
#include "RunningProgramTests.moc"
