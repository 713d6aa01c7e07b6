#include "Previews/ImageDecoding.h"

#include "Fakes/Bucket.h"
#include "Support/DamagedFiles.h"
#include "Support/Programs.h"

#include <QBuffer>
#include <QPainter>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

void append(QByteArray& png, const QByteArray& type, const QByteArray& data)
{
    const auto bigEndian = [](quint32 number) {
        QByteArray bytes(4, 0);
        qToBigEndian(number, bytes.data());
        return bytes;
    };
    quint32 crc = 0xffffffff;
    for (const char byte : type + data) {
        crc ^= uchar(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc & 1 ? (crc >> 1) ^ 0xedb88320 : crc >> 1;
    }
    png += bigEndian(quint32(data.size())) + type + data + bigEndian(~crc);
}

/// A black and white image of that size, all white but for nothing: a few kilobytes.
QByteArray hugePng(quint32 width, quint32 height)
{
    QByteArray header(8, 0);
    qToBigEndian(width, header.data());
    qToBigEndian(height, header.data() + 4);
    header += QByteArray::fromHex("0100000000"); // one bit a pixel, grey
    QByteArray png = QByteArray::fromHex("89504e470d0a1a0a");
    append(png, "IHDR", header);
    const QByteArray rows(qsizetype((width + 7) / 8 + 1) * height, 0);
    append(png, "IDAT", qCompress(rows, 1).mid(4));
    append(png, "IEND", {});
    return png;
}

} // namespace

/// Real files, made by the program that people make such files with.
class ImageDecodingTests final : public QObject
{
    Q_OBJECT

    Bucket m_bucket;
    QHash<QString, QByteArray> m_halves;

    [[nodiscard]] QByteArray made(const QString& name, const QStringList& arguments) const
    {
        runProgram(u"convert"_s, arguments + QStringList{m_bucket.file(name).path()});
        return m_bucket.read(name);
    }
    /// 96 x 64, the left half red and the right half blue.
    [[nodiscard]] QByteArray halves(const QString& name)
    {
        QByteArray& bytes = m_halves[name];
        if (bytes.isEmpty())
            bytes = made(name, {u"-size"_s, u"48x64"_s, u"xc:red"_s, u"xc:blue"_s, u"+append"_s});
        return bytes;
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
        const QByteArray bytes = halves(name);
        QTEST(imageFormatOf(bytes), "format");

        const QImage image = decodeImage(bytes);

        QCOMPARE(image.size(), QSize(96, 64));
        QVERIFY2(image.pixelColor(10, 32).red() > 200 && image.pixelColor(10, 32).blue() < 60, "left is red");
        QVERIFY2(image.pixelColor(85, 32).blue() > 200 && image.pixelColor(85, 32).red() < 60,
                 "right is blue");
    }

    void thePhotographIsUpright()
    {
        // The camera was held upright and says so: the left edge, red, is the top.
        const QByteArray rightTop = QByteArray::fromHex("ffe10022457869660000" // an Exif segment
                                                        "4d4d002a00000008"     // big-endian, the tags follow
                                                        "0001011200030000000100060000" // one: orientation 6
                                                        "00000000");
        const QImage image = decodeImage(halves(u"a.jpg"_s).insert(2, rightTop));

        QCOMPARE(image.size(), QSize(64, 96));
        QVERIFY(image.pixelColor(32, 10).red() > 200);
        QVERIFY(image.pixelColor(32, 85).blue() > 200);
    }

    void transparencyIsKept()
    {
        const QImage image = decodeImage(made(u"a.png"_s, {u"-size"_s, u"8x8"_s, u"xc:none"_s}));
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

        const QColor color = decodeImage(bytes).pixelColor(4, 4);

        QVERIFY(color.red() > 205);
    }

    void theContentDecidesAndNotTheName()
    {
        runProgram(u"convert"_s,
                   {u"-size"_s, u"8x8"_s, u"xc:red"_s, u"jpg:"_s + m_bucket.file(u"a.png"_s).path()});
        QCOMPARE(imageFormatOf(m_bucket.read(u"a.png"_s)), QByteArray("jpeg"));
        QVERIFY(!decodeImage(m_bucket.read(u"a.png"_s)).isNull());
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
        QVERIFY(decodeImage(bytes).isNull());
    }

    void anImageThatWouldTakeTooMuchMemoryIsNotDecoded()
    {
        const QByteArray bomb = hugePng(30000, 30000);
        QVERIFY(bomb.size() < 1'000'000);
        QVERIFY(decodeImage(bomb).isNull());
        QCOMPARE(decodeImage(hugePng(300, 300)).size(), QSize(300, 300));
    }

    void anImageThatWouldTakeTooMuchTimeIsGivenUp_data()
    {
        QTest::addColumn<QString>("name");
        for (const char* name : {"a.png", "a.jpg", "a.gif", "a.webp", "a.tiff", "a.bmp", "a.heic"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }

    void anImageThatWouldTakeTooMuchTimeIsGivenUp()
    {
        QFETCH(QString, name);
        const QByteArray bytes = halves(name);
        QVERIFY(!decodeImage(bytes, QDeadlineTimer(QDeadlineTimer::Forever)).isNull());
        QVERIFY(decodeImage(bytes, QDeadlineTimer(0)).isNull());
    }

    void damagedFilesDoNoHarm_data()
    {
        QTest::addColumn<QString>("name");
        for (const char* name : {"a.png", "a.jpg", "a.gif", "a.webp", "a.tiff", "a.bmp"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }

    void damagedFilesDoNoHarm()
    {
        QFETCH(QString, name);
        QVERIFY(survivesDamage(halves(name),
                               [](const QByteArray& bytes) { static_cast<void>(decodeImage(bytes)); }));
    }
};

QTEST_GUILESS_MAIN(ImageDecodingTests)
#include "ImageDecodingTests.moc"
