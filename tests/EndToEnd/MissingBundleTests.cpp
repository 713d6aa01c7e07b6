#include "Fakes/Bucket.h"
#include "Support/ProgramHome.h"

#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

/// The built program, moved away from the files that are shipped with it.
class MissingBundleTests final : public QObject
{
    Q_OBJECT

private:
    /// A place that holds the program alone.
    Bucket m_place;
    ProgramHome m_home;

    [[nodiscard]] QString program() const { return m_place.root().path() + u"/wendlores"_s; }

    void start(QProcess& process) const
    {
        process.setProcessEnvironment(m_home.environment(u"offscreen"_s));
        process.start(program(), QStringList());
    }

private Q_SLOTS:
    void initTestCase()
    {
        const QString built = qEnvironmentVariable("WENDLORE_BIN_DIR") + u"/wendlores"_s;
        for (const QString& part : {u""_s, u"-window"_s})
            QVERIFY(QFile::copy(built + part, program() + part));
    }

    void withoutItsBundleTheProgramStopsAndSaysWhy()
    {
        QProcess process;
        start(process);
        QVERIFY(process.waitForFinished(60000));

        const QString said = QString::fromUtf8(process.readAllStandardError());
        QVERIFY2(said.contains(u"unable to find bundle named WendloreKit_WendloreKit\n"_s), qPrintable(said));
        QVERIFY(process.exitStatus() == QProcess::CrashExit || process.exitCode() != 0);
    }

    void withItsBundleItStarts()
    {
        const QString bundle = m_place.root().path() + u"/WendloreKit_WendloreKit.bundle"_s;
        QVERIFY(QFile::link(qEnvironmentVariable("WENDLORE_BIN_DIR") + u"/WendloreKit_WendloreKit.bundle"_s,
                            bundle));
        QProcess process;
        start(process);
        // The settings of the first start are there once the window is.
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(m_home.filePath(u"wendlores/settings.json"_s)), 60000);

        process.terminate();
        QVERIFY(process.waitForFinished(60000));
        QVERIFY(!process.readAllStandardError().contains("unable to find bundle"));
    }
};

QTEST_GUILESS_MAIN(MissingBundleTests)
#include "MissingBundleTests.moc"
