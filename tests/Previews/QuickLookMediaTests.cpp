#include "Previews/QuickLookMedia.h"

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
        QTest::addColumn<QByteArray>("element");
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<int>("width");
        QTest::newRow("sound") << u"a.mp3"_s << QByteArray("<audio controls") << QByteArray("audio/mpeg")
                               << 0;
        QTest::newRow("film") << u"a.MP4"_s << QByteArray("<video controls") << QByteArray("video/mp4") << 0;
        QTest::newRow("drawing") << u"a.svg"_s << QByteArray("<img src") << QByteArray("image/svg+xml") << 0;
        QTest::newRow("font") << u"a.ttf"_s << QByteArray("@font-face") << QByteArray("font/ttf") << 900;
    }

    void mediaAreShownByTheEngine()
    {
        QFETCH(const QString, name);
        QFETCH(const QByteArray, element);
        QFETCH(const QByteArray, type);
        QFETCH(const int, width);
        const FileURL file = FileURL::file(u"/b/"_s + name);

        const auto page = mediaPage(file);

        QVERIFY(page && page->body.contains(element));
        QCOMPARE(page->streamed, file);
        QCOMPARE(page->streamedType, type);
        QCOMPARE(page->width, width);
    }

    void otherFilesAreNone() { QVERIFY(!mediaPage(FileURL::file(u"/b/a.xyz"_s))); }

    void aNameIsNoMarkup()
    {
        QVERIFY(mediaPage(FileURL::file(u"/b/\"><b>.mp3"_s))->body.contains("\"&quot;&gt;&lt;b&gt;.mp3\""));
    }
};

QTEST_GUILESS_MAIN(QuickLookMediaTests)
#include "QuickLookMediaTests.moc"
