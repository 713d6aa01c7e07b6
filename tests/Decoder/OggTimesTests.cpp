#include "Decoder/OggTimes.h"

#include "Fakes/Bucket.h"
#include "Support/SampleFiles.h"

#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// When the first packet of each kind is played, and how many there are, as FFmpeg reads the file.
QByteArrayList timesIn(const QByteArray& file)
{
    const Bucket bucket;
    bucket.write(u"a.ogg"_s, file);
    QProcess process;
    process.start(u"ffprobe"_s,
                  {u"-v"_s, u"error"_s, u"-select_streams"_s, u"a"_s, u"-show_entries"_s, u"packet=pts"_s,
                   u"-of"_s, u"default=nk=1:nw=1"_s, bucket.file(u"a.ogg"_s).path()});
    return process.waitForFinished() ? process.readAllStandardOutput().simplified().split(' ')
                                     : QByteArrayList();
}

} // namespace

class OggTimesTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void soundBeginsAfterTheZeroOfItsTime_data()
    {
        QTest::addColumn<QString>("name");
        for (const char* name : {"a.ogg", "a.opus", "a.ogv"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }

    void soundBeginsAfterTheZeroOfItsTime()
    {
        QFETCH(const QString, name);
        const QByteArray file = mediaFile(name);
        const QByteArrayList before = timesIn(file);
        QVERIFY(before.size() > 1 && before.first().toInt() < 0);

        const QByteArrayList after = timesIn(oggWithLaterSound(file));

        QVERIFY2(after.first().toInt() >= 0, after.first().constData());
        QCOMPARE(after.size(), before.size());
        QVERIFY(after.last().toInt() > before.last().toInt());
    }

    void otherFilesStayAsTheyAre()
    {
        for (const QByteArray& file : {QByteArray(), QByteArray("hej"), QByteArray("OggS"),
                                       mediaFile(u"a.mp3"_s), mediaFile(u"a.ogg"_s).first(30)})
            QCOMPARE(oggWithLaterSound(file), file);
    }

    void aFileThatBreaksOffIsChangedAsFarAsItGoes()
    {
        const QByteArray whole = mediaFile(u"a.ogg"_s);
        const QByteArray changed = oggWithLaterSound(whole);
        for (qsizetype size = 0; size < whole.size(); size += 101) {
            const QByteArray part = oggWithLaterSound(whole.first(size));
            QCOMPARE(part.size(), size);
            const qsizetype last = whole.first(size).lastIndexOf("OggS");
            QCOMPARE(part.first(std::max<qsizetype>(last, 0)), changed.first(std::max<qsizetype>(last, 0)));
        }
    }
};

QTEST_GUILESS_MAIN(OggTimesTests)
#include "OggTimesTests.moc"
