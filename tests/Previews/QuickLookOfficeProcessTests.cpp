#include "Previews/QuickLookOfficeProcess.h"

#include "Fakes/Bucket.h"

#include <QProcess>
#include <QTcpServer>
#include <QTest>

#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace wendlore;

namespace {

/// A program that stands in for the office program.
QString program(const Bucket& bucket, const QByteArray& script)
{
    bucket.write(u"program"_s, "#!/bin/sh\n" + script);
    QFile::setPermissions(bucket.file(u"program"_s).path(), QFile::ReadOwner | QFile::ExeOwner);
    return bucket.file(u"program"_s).path();
}

bool run(const Bucket& bucket, const QByteArray& script, const QuickLookLimits& limits = QuickLookLimits(30s))
{
    bucket.write(u"ut/"_s, {});
    return runOfficeProgram(program(bucket, script), bucket.folder(u"ut"_s).path(), {u"/d.docx"_s}, u"pdf"_s,
                            limits);
}

} // namespace

class QuickLookOfficeProcessTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itRunsWithAHomeAndSettingsOfItsOwn()
    {
        const Bucket bucket;

        QVERIFY(run(bucket, "echo \"$HOME $DISPLAY $*\" > \"$HOME/sagt\""));

        const QByteArray said = bucket.read(u"ut/sagt"_s);
        QVERIFY2(said.startsWith(bucket.folder(u"ut"_s).bytes() + "  -env:UserInstallation=file://"), said);
        QVERIFY(said.endsWith("--convert-to pdf --outdir " + bucket.folder(u"ut"_s).bytes() + " /d.docx\n"));
        QVERIFY(
            bucket.read(u"ut/profil/user/registrymodifications.xcu"_s).contains("DisableMacrosExecution"));
    }

    void itHasNoNetwork()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        const Bucket bucket;
        const QByteArray connect =
            "bash -c 'exec 3<>/dev/tcp/127.0.0.1/" + QByteArray::number(server.serverPort()) + "'";

        QVERIFY(run(bucket, "grep Seccomp: /proc/self/status > \"$HOME/filter\"\n" + connect +
                                " 2>/dev/null || echo > \"$HOME/nekad\""));

        QCOMPARE(bucket.read(u"ut/filter"_s).simplified(), QByteArray("Seccomp: 2"));
        QVERIFY(bucket.exists(u"ut/nekad"_s));
        QVERIFY(!server.hasPendingConnections());
        QCOMPARE(QProcess::execute(u"/bin/sh"_s, {u"-c"_s, QString::fromUtf8(connect)}),
                 0); // anybody else has
    }

    void aFailureIsOne()
    {
        const Bucket bucket;

        QVERIFY(!run(bucket, "exit 3"));
        QVERIFY(!runOfficeProgram(u"/finns/inte"_s, bucket.root().path(), {u"/d"_s}, u"pdf"_s,
                                  QuickLookLimits()));
        QVERIFY(!runOfficeProgram({}, bucket.root().path(), {u"/d"_s}, u"pdf"_s, QuickLookLimits()));
    }

    void aProgramThatHangsIsEndedWithItsChildren()
    {
        const Bucket bucket;

        QVERIFY(!run(bucket, "tail -f /dev/null & echo $! > \"$HOME/barn\"\nwait", QuickLookLimits(1s)));

        const QByteArray child = bucket.read(u"ut/barn"_s).trimmed();
        QVERIFY(!child.isEmpty());
        const QString status = u"/proc/%1/stat"_s.arg(QString::fromLatin1(child));
        QTRY_VERIFY(!QFile::exists(status) || [&status] {
            QFile file(status);
            return !file.open(QIODevice::ReadOnly) || file.readAll().contains(") Z ");
        }());
    }

    void itEndsWhenTheViewMovesOn()
    {
        const Bucket bucket;
        const QuickLookLimits limits(60s);
        std::thread view([limits] { limits.stop(); });

        QVERIFY(!run(bucket, "tail -f /dev/null", limits));
        view.join();
    }
};

QTEST_GUILESS_MAIN(QuickLookOfficeProcessTests)
#include "QuickLookOfficeProcessTests.moc"
