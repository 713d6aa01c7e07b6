#include "Previews/ImageDecoding.h"

#include "Support/Pictures.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace wendlore;

/// The formats themselves are tried where they are decoded.
class ImageDecodingTests final : public QObject
{
    Q_OBJECT

    static DecodedImage decoded(const QByteArray& bytes,
                                const QuickLookLimits& limits = QuickLookLimits(1min))
    {
        return ImageDecoder(bytes).decode(limits);
    }

private Q_SLOTS:
    void anotherProcessDecodes_data()
    {
        QTest::addColumn<QString>("name");
        for (const char* name : {"a.png", "a.jpg", "a.gif", "a.webp", "a.tiff", "a.bmp", "a.heic"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }

    void anotherProcessDecodes()
    {
        QFETCH(QString, name);

        const DecodedImage decoded = ImageDecodingTests::decoded(twoHalves(name));

        QCOMPARE(decoded.image.size(), QSize(96, 64));
        QVERIFY(decoded.image.pixelColor(10, 32).red() > 200);
        QVERIFY(decoded.image.pixelColor(85, 32).blue() > 200);
        QVERIFY(!decoded.moves);
    }

    void whatCanBeSeenThroughStaysSo()
    {
        const QImage image = decoded(pictureFile(u"a.png"_s, {u"-size"_s, u"8x8"_s, u"xc:none"_s})).image;
        QCOMPARE(image.format(), QImage::Format_ARGB32_Premultiplied);
        QCOMPARE(image.pixelColor(4, 4).alpha(), 0);
    }

    void aMovingImageIsKnown()
    {
        const DecodedImage decoded = ImageDecodingTests::decoded(movingFile(u"a.gif"_s, 0));
        QVERIFY(decoded.moves);
        QCOMPARE(decoded.image.pixelColor(8, 8), QColor(Qt::red));
    }

    void theImageIsStillThereWhenItIsCopiedAndChanged()
    {
        QImage image = decoded(twoHalves(u"a.png"_s)).image;
        const QImage before = image;
        image.fill(Qt::green);
        QCOMPARE(before.pixelColor(10, 32), QColor(Qt::red));
        QCOMPARE(image.pixelColor(10, 32), QColor(Qt::green));
    }

    void aLargePhotographIsSketchedFirst()
    {
        ImageDecoder decoder(
            pictureFile(u"a.jpg"_s, {u"-size"_s, u"3000x4000"_s, u"xc:red"_s, u"-quality"_s, u"50"_s}));

        const ImageSketch sketch = decoder.sketch(QuickLookLimits(1min));
        const DecodedImage decoded = decoder.decode(QuickLookLimits(1min));

        QCOMPARE(sketch.image.size(), QSize(1500, 2000));
        QVERIFY(sketch.image.pixelColor(700, 700).red() > 200);
        QCOMPARE(sketch.size, decoded.image.size());
    }

    void otherImagesAreNot()
    {
        QVERIFY(ImageDecoder(twoHalves(u"a.jpg"_s)).sketch(QuickLookLimits(1min)).image.isNull());
        QVERIFY(ImageDecoder("hej").sketch(QuickLookLimits(1min)).image.isNull());
    }

    void whatIsNoImageIsNone()
    {
        QVERIFY(decoded("hej").image.isNull());
        QVERIFY(decoded({}).image.isNull());
    }

    void anImageThatWouldTakeTooMuchMemoryIsNotDecoded()
    {
        const QByteArray bomb = blackPng(30000, 30000);
        QVERIFY(bomb.size() < 1'000'000);
        QVERIFY(decoded(bomb).image.isNull());
    }

    void aLargeImageIsDecoded() { QCOMPARE(decoded(blackPng(6000, 4000)).image.size(), QSize(6000, 4000)); }

    void anImageThatWouldTakeTooMuchTimeIsGivenUp()
    {
        const QByteArray bytes = twoHalves(u"a.png"_s);
        QVERIFY(decoded(bytes, QuickLookLimits(0ms)).image.isNull());
        const QuickLookLimits stopped(1min);
        stopped.stop();
        QVERIFY(decoded(bytes, stopped).image.isNull());
    }
};

QTEST_GUILESS_MAIN(ImageDecodingTests)
#include "ImageDecodingTests.moc"
