#include "Previews/ImageMagnification.h"

#include <QTest>

using namespace wendlore;

class ImageMagnificationTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aWholeImageFits_data()
    {
        QTest::addColumn<QSizeF>("image");
        QTest::addColumn<QSizeF>("view");
        QTest::addColumn<double>("scale");
        QTest::addColumn<QPointF>("scroll");
        QTest::newRow("small: its natural size") << QSizeF(400, 300) << QSizeF(1000, 800) << 1.0 << QPointF();
        QTest::newRow("large") << QSizeF(4000, 3000) << QSizeF(1000, 800) << 0.25 << QPointF();
        QTest::newRow("high") << QSizeF(1000, 4000) << QSizeF(1000, 800) << 0.2 << QPointF();
        QTest::newRow("as large as the view") << QSizeF(1000, 800) << QSizeF(1000, 800) << 1.0 << QPointF();
        QTest::newRow("too wide for the minimum: its middle")
            << QSizeF(100000, 10) << QSizeF(1000, 800) << 0.05 << QPointF(2000, 0);
        QTest::newRow("a view without room") << QSizeF(400, 300) << QSizeF(0, 0) << 0.05 << QPointF(10, 7.5);
    }

    void aWholeImageFits()
    {
        QFETCH(QSizeF, image);
        QFETCH(QSizeF, view);
        const auto fitting = magnifyToFit(image, view);
        QVERIFY(fitting);
        QTEST(fitting->scale, "scale");
        QTEST(fitting->scroll, "scroll");
    }

    void anImageWithoutExtentIsLeftAlone_data()
    {
        QTest::addColumn<QSizeF>("image");
        QTest::newRow("no width") << QSizeF(0, 10);
        QTest::newRow("no height") << QSizeF(10, 0);
        QTest::newRow("none") << QSizeF();
    }

    void anImageWithoutExtentIsLeftAlone()
    {
        QFETCH(QSizeF, image);
        QVERIFY(!magnifyToFit(image, {1000, 800}));
    }

    void thePointBelowTheAnchorStays()
    {
        const Magnification before{0.5, {100, 40}};
        const QPointF anchor(30, 60);

        const Magnification after = magnify(before, 2.0, anchor);

        QCOMPARE(after.scale, 2.0);
        QCOMPARE((after.scroll + anchor) / after.scale, (before.scroll + anchor) / before.scale);
    }

    void noScaleIsBeyondTheLimits()
    {
        QCOMPARE(magnify({1.0, {}}, 1000, {}).scale, 20.0);
        QCOMPARE(magnify({1.0, {}}, 0.0001, {}).scale, 0.05);
    }
};

QTEST_APPLESS_MAIN(ImageMagnificationTests)
#include "ImageMagnificationTests.moc"
