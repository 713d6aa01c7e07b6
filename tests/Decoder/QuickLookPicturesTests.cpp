#include "Decoder/QuickLookPictures.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class QuickLookPicturesTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theBestPictureIsShown_data()
    {
        QTest::addColumn<QString>("place");
        QTest::addColumn<QByteArray>("type");
        QTest::newRow("pages") << u"preview.jpg"_s << QByteArray("image/jpeg");
        QTest::newRow("older pages") << u"QuickLook/Thumbnail.jpg"_s << QByteArray("image/jpeg");
        QTest::newRow("odt") << u"Thumbnails/thumbnail.png"_s << QByteArray("image/png");
    }

    void theBestPictureIsShown()
    {
        QFETCH(const QString, place);
        QFETCH(const QByteArray, type);

        const auto page = picturePage({{place, "bild"}, {u"docProps/thumbnail.jpeg"_s, "sämre"}});

        QVERIFY(page);
        QCOMPARE(page->resources.value(u"bild"_s).bytes, QByteArray("bild"));
        QCOMPARE(page->resources.value(u"bild"_s).mimeType, type);
    }

    void withoutAPictureThereIsNoPage() { QVERIFY(!picturePage({{u"annan.jpg"_s, "bild"}})); }
};

QTEST_GUILESS_MAIN(QuickLookPicturesTests)
#include "QuickLookPicturesTests.moc"
