#include "Previews/ImageAnimation.h"

#include "Fakes/Bucket.h"
#include "Fakes/ManualScheduler.h"
#include "Support/DamagedFiles.h"
#include "Support/Programs.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace wendlore;

namespace {

/// A red and a blue picture, 200 and 300 ms long, shown `rounds` times (0: without end).
QByteArray movingImage(const Bucket& bucket, const QString& name, int rounds)
{
    runProgram(u"convert"_s,
               {u"-size"_s, u"16x16"_s, u"-loop"_s, QString::number(rounds), u"-delay"_s, u"20"_s,
                u"xc:red"_s, u"-delay"_s, u"30"_s, u"xc:blue"_s, bucket.file(name).path()});
    return bucket.read(name);
}

bool isRed(const QImage& image)
{
    return image.pixelColor(8, 8).red() > 200;
}

} // namespace

class ImageAnimationTests final : public QObject
{
    Q_OBJECT

    Bucket m_bucket;
    QList<bool> m_seen;

    /// Whether each picture that `animation` shows from now on is the red one.
    const QList<bool>& seen(ImageAnimation& animation)
    {
        m_seen.clear();
        connect(&animation, &ImageAnimation::frameChanged, this,
                [this](const ImagePyramid& picture) { m_seen += isRed(picture.levelFor(1)); });
        return m_seen;
    }

private Q_SLOTS:
    // Before anything that starts threads.
    void damagedFilesDoNoHarm_data()
    {
        QTest::addColumn<QString>("name");
        for (const char* name : {"a.gif", "a.webp"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }

    void damagedFilesDoNoHarm()
    {
        QFETCH(QString, name);
        QVERIFY(survivesDamage(movingImage(m_bucket, name, 0), [](const QByteArray& bytes) {
            if (!ImageFrames::areIn(bytes))
                return;
            ImageFrames frames(bytes);
            for (int left = 5; left > 0 && frames.next(); --left) {
            }
        }));
    }

    void imagesThatMoveAreKnown()
    {
        QVERIFY(ImageFrames::areIn(movingImage(m_bucket, u"a.gif"_s, 0)));
        QVERIFY(ImageFrames::areIn(movingImage(m_bucket, u"a.webp"_s, 0)));
        runProgram(u"convert"_s, {u"xc:red"_s, m_bucket.file(u"still.gif"_s).path()});
        QVERIFY(!ImageFrames::areIn(m_bucket.read(u"still.gif"_s)));
        QVERIFY(!ImageFrames::areIn("hej"));
    }

    void picturesFollowEachOtherInTheirTimes()
    {
        ManualScheduler scheduler;
        ImageAnimation animation(scheduler, movingImage(m_bucket, u"a.gif"_s, 0));
        const QList<bool>& shown = seen(animation);

        scheduler.finishBackgroundWork();
        QCOMPARE(shown, QList{true});
        scheduler.advance(199ms);
        QCOMPARE(shown, QList{true});
        scheduler.advance(1ms);
        scheduler.finishBackgroundWork();
        QCOMPARE(shown, (QList{true, false}));
        scheduler.advance(300ms);
        scheduler.finishBackgroundWork();
        QCOMPARE(shown, (QList{true, false, true}));
    }

    void webPMovesToo()
    {
        ManualScheduler scheduler;
        ImageAnimation animation(scheduler, movingImage(m_bucket, u"a.webp"_s, 0));
        const QList<bool>& shown = seen(animation);
        for (int picture = 0; picture < 3; ++picture) {
            scheduler.finishBackgroundWork();
            scheduler.advance(1s);
        }
        QCOMPARE(shown.mid(0, 3), (QList{true, false, true}));
    }

    void itEndsAfterTheRoundsThatTheFileAsksFor()
    {
        ImageFrames frames(movingImage(m_bucket, u"a.gif"_s, 2));
        int pictures = 0;
        while (pictures < 100 && frames.next())
            ++pictures;
        QVERIFY(pictures >= 4 && pictures <= 6); // what "twice" means differs between decoders by one
        QVERIFY(!frames.next());
    }

    void withoutAnEndItGoesOn()
    {
        ImageFrames frames(movingImage(m_bucket, u"a.gif"_s, 0));
        for (int picture = 0; picture < 50; ++picture)
            QVERIFY(frames.next());
    }

    void aPausedOneStandsStillAndGoesOn()
    {
        ManualScheduler scheduler;
        ImageAnimation animation(scheduler, movingImage(m_bucket, u"a.gif"_s, 0));
        QSignalSpy shown(&animation, &ImageAnimation::frameChanged);
        scheduler.finishBackgroundWork();

        animation.setPaused(true);
        scheduler.advance(10s);
        scheduler.finishBackgroundWork();
        QCOMPARE(shown.size(), 1);
        QCOMPARE(scheduler.pendingTasks(), 0);
        animation.setPaused(false);

        QCOMPARE(shown.size(), 2);
    }

    void aDamagedOneStopsAtTheDamage()
    {
        const QByteArray whole = movingImage(m_bucket, u"a.gif"_s, 0);
        ImageFrames frames(whole.left(whole.size() / 2));
        int pictures = 0;
        while (pictures < 100 && frames.next())
            ++pictures;
        QVERIFY(pictures < 3);
    }
};

QTEST_GUILESS_MAIN(ImageAnimationTests)
#include "ImageAnimationTests.moc"
