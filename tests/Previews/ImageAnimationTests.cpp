#include "Previews/ImageAnimation.h"

#include "Fakes/ManualScheduler.h"
#include "Support/Pictures.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace wendlore;

namespace {

bool isRed(const QImage& image)
{
    return image.pixelColor(8, 8).red() > 200;
}

} // namespace

class ImageAnimationTests final : public QObject
{
    Q_OBJECT

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
    void picturesFollowEachOtherInTheirTimes()
    {
        ManualScheduler scheduler;
        ImageAnimation animation(scheduler, movingFile(u"a.gif"_s, 0));
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
        ImageAnimation animation(scheduler, movingFile(u"a.webp"_s, 0));
        const QList<bool>& shown = seen(animation);
        for (int picture = 0; picture < 3; ++picture) {
            scheduler.finishBackgroundWork();
            scheduler.advance(1s);
        }
        QCOMPARE(shown.mid(0, 3), (QList{true, false, true}));
    }

    void itEndsAfterTheRoundsThatTheFileAsksFor()
    {
        ImageFrames frames(movingFile(u"a.gif"_s, 2));
        int pictures = 0;
        while (pictures < 100 && frames.next())
            ++pictures;
        QVERIFY(pictures >= 4 && pictures <= 6); // what "twice" means differs between decoders by one
        QVERIFY(!frames.next());
    }

    void aClosedOneShowsNothingMore()
    {
        ImageFrames frames(movingFile(u"a.gif"_s, 0));
        QVERIFY(frames.next());
        frames.close();
        QVERIFY(!frames.next());
    }

    void aPausedOneStandsStillAndGoesOn()
    {
        ManualScheduler scheduler;
        ImageAnimation animation(scheduler, movingFile(u"a.gif"_s, 0));
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
};

QTEST_GUILESS_MAIN(ImageAnimationTests)
#include "ImageAnimationTests.moc"
