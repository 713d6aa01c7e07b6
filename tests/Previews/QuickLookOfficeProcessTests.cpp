#include "Previews/QuickLookOfficeProcess.h"

#include "Fakes/Bucket.h"

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
    return runOfficeProgram(program(bucket, script), bucket.folder(u"ut"_s).path(), u"/d.docx"_s, u"pdf"_s,
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
        const Bucket bucket;
        QVERIFY(run(bucket, "cat /proc/net/dev > \"$HOME/natet\""));

        const QByteArray devices = bucket.read(u"ut/natet"_s);
        const auto lines = devices.trimmed().split('\n');
        for (qsizetype i = 2; i < lines.size(); ++i)
            QVERIFY2(lines[i].trimmed().startsWith("lo:"), lines[i]);
    }

    void aFailureIsOne()
    {
        const Bucket bucket;

        QVERIFY(!run(bucket, "exit 3"));
        QVERIFY(
            !runOfficeProgram(u"/finns/inte"_s, bucket.root().path(), u"/d"_s, u"pdf"_s, QuickLookLimits()));
        QVERIFY(!runOfficeProgram({}, bucket.root().path(), u"/d"_s, u"pdf"_s, QuickLookLimits()));
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
