#include "Previews/ImagePyramid.h"

#include <QTest>

using namespace wendlore;

namespace {

ImagePyramid pyramid(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::red);
    return ImagePyramid(image);
}

} // namespace

class ImagePyramidTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSmallestVersionThatHasEnoughIsTaken_data()
    {
        QTest::addColumn<double>("scale");
        QTest::addColumn<int>("width");
        QTest::newRow("enlarged") << 3.0 << 2048;
        QTest::newRow("natural") << 1.0 << 2048;
        QTest::newRow("a little smaller") << 0.9 << 2048;
        QTest::newRow("half") << 0.5 << 1024;
        QTest::newRow("less than half") << 0.4 << 1024;
        QTest::newRow("a quarter") << 0.25 << 512;
        QTest::newRow("tiny") << 0.05 << 512;
    }

    void theSmallestVersionThatHasEnoughIsTaken()
    {
        QFETCH(double, scale);
        const ImagePyramid image = pyramid(2048, 1024);
        QTEST(image.levelFor(scale).width(), "width");
        QCOMPARE(image.levelFor(scale).pixelColor(3, 3), QColor(Qt::red));
        QCOMPARE(image.size(), QSize(2048, 1024));
    }

    void aSketchStandsForALargerImage()
    {
        QImage image(1024, 512, QImage::Format_RGB32);
        image.fill(Qt::red);
        const ImagePyramid sketch(image, QSize(4096, 2048));
        QCOMPARE(sketch.size(), QSize(4096, 2048));
        QCOMPARE(sketch.levelFor(1).width(), 1024);
        QCOMPARE(sketch.levelFor(0.25).width(), 1024);
        QCOMPARE(sketch.levelFor(0.125).width(), 512);
    }

    void aSmallImageIsTheOnlyVersion() { QCOMPARE(pyramid(40, 3000).levelFor(0.05).size(), QSize(40, 3000)); }

    void noImageIsEmpty()
    {
        QVERIFY(ImagePyramid(QImage()).isEmpty());
        QCOMPARE(ImagePyramid().size(), QSize());
    }
};

QTEST_APPLESS_MAIN(ImagePyramidTests)
#include "ImagePyramidTests.moc"
