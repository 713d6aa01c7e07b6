#include "Fakes/Bucket.h"
#include "Support/EngineTest.h"
#include "Support/PrivateBus.h"
#include "Support/VirtualDisplay.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// A person at a screen and a keyboard, with the built program and a session bus.
class Person final
{
public:
    void start(const QStringList& arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString& variable : {u"HOME"_s, u"XDG_CONFIG_HOME"_s, u"XDG_DATA_HOME"_s,
                                        u"XDG_STATE_HOME"_s, u"XDG_CACHE_HOME"_s, u"XDG_RUNTIME_DIR"_s})
            environment.insert(variable, m_home.path());
        environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
        environment.insert(u"DISPLAY"_s, display.name());
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_bus.address());
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program.start(qEnvironmentVariable("WENDLORE_BIN_DIR") + u"/wendlores"_s, arguments);
    }
    /// Waits until `count` windows of that title are shown; gives them.
    [[nodiscard]] QStringList windows(const QString& title, qsizetype count) const
    {
        QStringList found;
        static_cast<void>(QTest::qWaitFor(
            [&] { return (found = display.windows(title + u" — Wendlores"_s)).size() == count; }, patience));
        return found;
    }
    /// Presses a key until the note on disk changes: nothing outside tells when the page takes keys.
    [[nodiscard]] bool goOnTyping(const Bucket& bucket, const QString& note) const
    {
        const QByteArray before = bucket.read(note);
        for (int tries = 0; tries < 10; ++tries) {
            display.type(u"x"_s);
            if (QTest::qWaitFor([&] { return bucket.read(note) != before; }, 4000))
                return true;
        }
        return false;
    }
    [[nodiscard]] bool quit()
    {
        display.press(u"ctrl+q"_s);
        return program.waitForFinished(patience) && program.exitStatus() == QProcess::NormalExit &&
               program.exitCode() == 0;
    }

    VirtualDisplay display;
    QProcess program;

private:
    QTemporaryDir m_home;
    PrivateBus m_bus;
};

bool endsWith(const Bucket& bucket, const QString& note, const QByteArray& text)
{
    return QTest::qWaitFor([&] { return bucket.read(note).trimmed().endsWith(text); }, patience);
}

} // namespace

class DesktopSessionTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNoteIsWrittenInTwoWindowsAndFoundAgainAfterARestart()
    {
        const Bucket bucket({{"Annan.md", "annan\n"}});
        const QString note = u"Ny not.md"_s;
        Person person;
        QVERIFY(!person.display.name().isEmpty());
        person.start({bucket.root().path()});
        const QStringList main = person.windows(bucket.root().lastPathComponent(), 1);
        QCOMPARE(main.size(), 1);
        person.display.focus(main[0]);

        person.display.press(u"ctrl+n"_s);
        QTRY_VERIFY_WITH_TIMEOUT(bucket.exists(note), patience);
        QVERIFY(person.goOnTyping(bucket, note));
        person.display.type(u" hej"_s);
        QVERIFY(endsWith(bucket, note, " hej"));

        person.display.press(u"ctrl+alt+n"_s);
        QStringList both = person.windows(u"Ny not"_s, 2);
        QCOMPARE(both.size(), 2);
        both.removeAll(main[0]);
        person.display.focus(both[0]);
        QVERIFY(person.goOnTyping(bucket, note));
        person.display.press(u"ctrl+w"_s);
        QCOMPARE(person.windows(u"Ny not"_s, 1), main);

        person.display.focus(main[0]);
        person.display.press(u"ctrl+alt+n"_s);
        QCOMPARE(person.windows(u"Ny not"_s, 2).size(), 2);
        const QByteArray written = bucket.read(note);
        QVERIFY(person.quit());

        person.start({});
        QCOMPARE(person.windows(u"Ny not"_s, 2).size(), 2);
        QCOMPARE(bucket.read(note), written);
        QCOMPARE(bucket.names(), QStringList({u"Annan.md"_s, note}));
        QVERIFY(person.quit());
    }

    void startsDoNotMoveTheWindow()
    {
        const Bucket bucket({{"A.md", "a\n"}});
        Person person;
        QRect first;
        for (int start = 0; start < 3; ++start) {
            person.start({bucket.root().path()});
            const QStringList window = person.windows(bucket.root().lastPathComponent(), 1);
            QCOMPARE(window.size(), 1);
            person.display.focus(window[0]);
            const QRect place = person.display.placeOf(window[0]);
            QVERIFY(place.isValid());
            if (start == 0)
                first = place;
            QCOMPARE(place, first);
            QVERIFY(person.quit());
        }
    }
};

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(DesktopSessionTests)
#include "DesktopSessionTests.moc"
