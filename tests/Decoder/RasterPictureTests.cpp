#include "Decoder/RasterPicture.h"

#include "Support/DamagedFiles.h"
#include "Support/Pictures.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageWriter>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class RasterPictureTests final : public QObject
{
    Q_OBJECT

    QByteArray m_memory = QByteArray(4'000'000, 'x');

    [[nodiscard]] QImage decoded(const QByteArray& bytes)
    {
        return rasterPicture(bytes, {reinterpret_cast<uchar*>(m_memory.data()), size_t(m_memory.size())});
    }

private Q_SLOTS:
    void everyFormatIsShown_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("format");
        QTest::newRow("PNG") << u"a.png"_s << QByteArray("png");
        QTest::newRow("JPEG") << u"a.jpg"_s << QByteArray("jpeg");
        QTest::newRow("GIF") << u"a.gif"_s << QByteArray("gif");
        QTest::newRow("WebP") << u"a.webp"_s << QByteArray("webp");
        QTest::newRow("TIFF") << u"a.tiff"_s << QByteArray("tiff");
        QTest::newRow("BMP") << u"a.bmp"_s << QByteArray("bmp");
        QTest::newRow("HEIC") << u"a.heic"_s << QByteArray("heif");
    }

    void everyFormatIsShown()
    {
        QFETCH(QString, name);
        const QByteArray bytes = twoHalves(name);
        QTEST(pictureFormatOf(bytes), "format");

        const QImage image = decoded(bytes);

        QCOMPARE(image.size(), QSize(96, 64));
        QVERIFY2(image.pixelColor(10, 32).red() > 200 && image.pixelColor(10, 32).blue() < 60, "left is red");
        QVERIFY2(image.pixelColor(85, 32).blue() > 200 && image.pixelColor(85, 32).red() < 60,
                 "right is blue");

        QVERIFY(survivesDamage(bytes,
                               [this](const QByteArray& damaged) { static_cast<void>(decoded(damaged)); }));
    }

    void aPhotographIsDecodedWhereItIsLookedFor()
    {
        const QImage image = decoded(twoHalves(u"a.jpg"_s));
        QCOMPARE(static_cast<const void*>(image.constBits()), static_cast<const void*>(m_memory.constData()));
    }

    void thePhotographIsUpright()
    {
        // The camera was held upright and says so: the left edge, red, is the top.
        const QByteArray rightTop = QByteArray::fromHex("ffe10022457869660000" // an Exif segment
                                                        "4d4d002a00000008"     // big-endian, the tags follow
                                                        "0001011200030000000100060000" // one: orientation 6
                                                        "00000000");
        const QImage image = decoded(twoHalves(u"a.jpg"_s).insert(2, rightTop));

        QCOMPARE(image.size(), QSize(64, 96));
        QVERIFY(image.pixelColor(32, 10).red() > 200);
        QVERIFY(image.pixelColor(32, 85).blue() > 200);
    }

    void theSketchOfAPhotographIsUprightToo()
    {
        QImage large(4000, 3000, QImage::Format_RGB32);
        large.fill(Qt::blue);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        QImageWriter writer(&buffer, "jpeg");
        writer.setTransformation(QImageIOHandler::TransformationRotate90);
        QVERIFY(writer.write(large));
        QByteArray memory(qsizetype(4000) * 3000 * 4, Qt::Uninitialized);
        const std::span room(reinterpret_cast<uchar*>(memory.data()), size_t(memory.size()));

        const PictureSketch sketch = rasterSketch(bytes, room);

        QCOMPARE(sketch.size, QSize(3000, 4000));
        QCOMPARE(sketch.picture.size(), QSize(1500, 2000));
        QVERIFY2(rasterSketch(bytes, room.first(room.size() - 1)).picture.isNull(), "the whole has no room");
        QVERIFY2(rasterSketch(twoHalves(u"a.jpg"_s), room).picture.isNull(), "it is small");
    }

    void transparencyIsKept()
    {
        const QImage image = decoded(pictureFile(u"a.png"_s, {u"-size"_s, u"8x8"_s, u"xc:none"_s}));
        QCOMPARE(image.format(), QImage::Format_ARGB32_Premultiplied);
        QCOMPARE(image.pixelColor(4, 4).alpha(), 0);
    }

    void coloursOfAnotherSpaceAreTheScreens()
    {
        QImage wide(8, 8, QImage::Format_RGB32);
        wide.fill(QColor(200, 100, 50));
        wide.setColorSpace(QColorSpace::DisplayP3);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        QVERIFY(wide.save(&buffer, "png"));

        const QColor color = decoded(bytes).pixelColor(4, 4);

        QVERIFY(color.red() > 205);
    }

    void theContentDecidesAndNotTheName()
    {
        // The program takes "jpg:" before a name for the format.
        const QByteArray bytes = pictureFile(u"a.jpg"_s, {u"-size"_s, u"8x8"_s, u"xc:red"_s});
        QCOMPARE(pictureFormatOf(bytes), QByteArray("jpeg"));
        QCOMPARE(decoded(bytes).size(), QSize(8, 8));
    }

    void whatIsNoImageIsNone_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("text") << QByteArray("hej");
        QTest::newRow("one byte") << QByteArray("\x89");
        QTest::newRow("a beginning only") << QByteArray::fromHex("89504e470d0a1a0a");
        QTest::newRow("a drawing, which other views show")
            << QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>");
        QTest::newRow("a document") << QByteArray("%PDF-1.4");
    }

    void whatIsNoImageIsNone()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(decoded(bytes).isNull());
    }

    void anImageThatWouldTakeTooMuchMemoryIsNotDecoded()
    {
        QCOMPARE(decoded(blackPng(1000, 1000)).size(), QSize(1000, 1000));
        QVERIFY(decoded(blackPng(1001, 1000)).isNull());
        QVERIFY(rasterPicture(blackPng(8, 8), {}).isNull());
    }
};

QTEST_GUILESS_MAIN(RasterPictureTests)
#include "RasterPictureTests.moc"
