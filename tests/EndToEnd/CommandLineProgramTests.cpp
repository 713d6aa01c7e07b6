#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

struct Ending final
{
    int code = -1;
    QString output;
    QString errors;
};

/// Runs the program with `arguments` in a home of its own, without a screen.
Ending run(const QStringList& arguments, const QString& platform = u"offscreen"_s)
{
    const QTemporaryDir home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"HOME"_s, home.path());
    environment.insert(u"XDG_CONFIG_HOME"_s, home.path());
    environment.insert(u"QT_QPA_PLATFORM"_s, platform);
    environment.remove(u"QTWEBENGINE_DISABLE_SANDBOX"_s);
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(qEnvironmentVariable("WENDLORE_BIN_DIR") + u"/wendlores"_s, arguments);
    if (!program.waitForFinished())
        qFatal("the program did not end");
    return {program.exitCode(), QString::fromUtf8(program.readAllStandardOutput()),
            QString::fromUtf8(program.readAllStandardError())};
}

} // namespace

class CommandLineProgramTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void helpAndVersionNeedNoScreen()
    {
        const QString noScreen = u"no-such-platform"_s;

        const Ending help = run({u"--help"_s}, noScreen);
        const Ending version = run({u"--version"_s}, noScreen);

        QCOMPARE(help.code, 0);
        QVERIFY(help.output.contains(u"wendlores [MAPP|FIL|LÄNK]"_s));
        QCOMPARE(version.code, 0);
        QVERIFY(version.output.startsWith(u"Wendlores "_s));
    }

    void whatIsNotThereCannotBeOpened()
    {
        const Ending ending = run({u"no/such/note.md"_s});

        QCOMPARE(ending.code, 1);
        QVERIFY(ending.errors.contains(u"finns inte:"_s));
    }

    void nonsenseIsRefused()
    {
        const Ending ending = run({u"--nonsens"_s});

        QCOMPARE(ending.code, 2);
        QVERIFY(ending.errors.contains(u"okänd flagga --nonsens"_s));
        QVERIFY(ending.output.isEmpty());
    }

    void rootIsToldHowToGoOn()
    {
        if (::geteuid() != 0)
            return; // an ordinary user is not told anything

        const Ending ending = run({});

        QCOMPARE(ending.code, 1);
        QVERIFY(ending.errors.contains(u"QTWEBENGINE_DISABLE_SANDBOX=1 wendlores"_s));
    }
};

QTEST_GUILESS_MAIN(CommandLineProgramTests)
#include "CommandLineProgramTests.moc"
