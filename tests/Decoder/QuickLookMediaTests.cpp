#include "Decoder/QuickLookMedia.h"

#include "Decoder/OggTimes.h"
#include "Fakes/Bucket.h"
#include "Support/SampleFiles.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class QuickLookMediaTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void mediaAreShownByTheEngine_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("element");
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<int>("width");
        QTest::newRow("sound") << u"a.mp3"_s << QByteArray("ID3") << QByteArray("<audio controls")
                               << QByteArray("audio/mpeg") << 0;
        QTest::newRow("film") << u"a.MP4"_s << QByteArray("film") << QByteArray("<video controls")
                              << QByteArray("video/mp4") << 0;
        QTest::newRow("drawing") << u"a.svg"_s << QByteArray("<?xml version='1.0'?><!-- x --><svg/>")
                                 << QByteArray("<img src") << QByteArray("image/svg+xml") << 0;
        QTest::newRow("font") << u"a.ttf"_s << QByteArray("\0\1\0\0", 4) << QByteArray("@font-face")
                              << QByteArray("font/ttf") << 900;
    }

    void mediaAreShownByTheEngine()
    {
        QFETCH(const QString, name);
        QFETCH(const QByteArray, bytes);
        QFETCH(const QByteArray, element);
        QFETCH(const QByteArray, type);
        QFETCH(const int, width);
        const Bucket bucket;
        bucket.write(name, bytes);

        const auto page = mediaPage(bucket.file(name));

        QVERIFY(page && page->body.contains(element));
        QCOMPARE(page->streamedType, type);
        QCOMPARE(page->width, width);
    }

    void soundThatTheEngineWouldRefuseBeginsOtherwise()
    {
        const QByteArray sound = mediaFile(u"a.ogg"_s);
        const Bucket bucket;
        bucket.write(u"a.ogg"_s, sound);
        bucket.write(u"lång.ogg"_s, sound + QByteArray(20'000'000, 'x'));

        const auto page = mediaPage(bucket.file(u"a.ogg"_s));
        const auto longPage = mediaPage(bucket.file(u"lång.ogg"_s));

        QVERIFY(page && longPage);
        QCOMPARE(page->streamedType, QByteArray("audio/ogg"));
        QCOMPARE(page->streamedBeginning, oggWithLaterSound(sound));
        QCOMPARE(longPage->streamedBeginning.first(sound.size()), page->streamedBeginning);
        QVERIFY(longPage->streamedBeginning.size() < 10'000'000);
    }

    void otherFilesAreNone_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("another kind") << u"a.xyz"_s << QByteArray("x");
        QTest::newRow("nothing in it") << u"a.mp3"_s << QByteArray();
        QTest::newRow("no font") << u"a.ttf"_s << QByteArray("hej");
        QTest::newRow("half a drawing") << u"a.svg"_s << QByteArray("<svg><path>");
        QTest::newRow("no drawing") << u"a.svg"_s << QByteArray("<html/>");
    }

    void otherFilesAreNone()
    {
        QFETCH(const QString, name);
        QFETCH(const QByteArray, bytes);
        const Bucket bucket;
        bucket.write(name, bytes);
        QVERIFY(!mediaPage(bucket.file(name)));
        QVERIFY(!mediaPage(bucket.file(u"borta-"_s + name)));
    }

    void aNameIsNoMarkup()
    {
        const Bucket bucket{{"\"><b>.mp3", "x"}};
        QVERIFY(mediaPage(bucket.file(u"\"><b>.mp3"_s))->body.contains("\"&quot;&gt;&lt;b&gt;.mp3\""));
    }
};

QTEST_GUILESS_MAIN(QuickLookMediaTests)
#include "QuickLookMediaTests.moc"
