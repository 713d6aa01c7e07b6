#include "Previews/PdfLayout.h"

#include <QTest>

using namespace wendlore;

namespace {

const QList<QSizeF> pages{{100, 200}, {50, 100}, {100, 50}};

} // namespace

class PdfLayoutTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pagesStandBelowEachOtherInTheMiddle()
    {
        const PdfLayout layout(pages, 2, 300);
        QCOMPARE(layout.page(0), QRectF(50, 12, 200, 400));
        QCOMPARE(layout.page(1), QRectF(100, 424, 100, 200));
        QCOMPARE(layout.page(2), QRectF(50, 636, 200, 100));
        QCOMPARE(layout.size(), QSizeF(300, 748));
    }

    void pagesWiderThanTheViewMakeRoom() { QCOMPARE(PdfLayout(pages, 10, 300).size().width(), 1024.0); }

    void theWidestPageFillsTheView()
    {
        QCOMPARE(PdfLayout::scaleToFit(pages, 324), 3.0);
        QVERIFY(PdfLayout::scaleToFit(pages, 0) > 0);
        QCOMPARE(PdfLayout::scaleToFit({}, 324), 1.0);
    }

    void aHeightBelongsToThePageThereOrAbove_data()
    {
        QTest::addColumn<double>("y");
        QTest::addColumn<int>("page");
        QTest::newRow("above all") << 0.0 << 0;
        QTest::newRow("first") << 100.0 << 0;
        QTest::newRow("gap") << 415.0 << 0;
        QTest::newRow("second") << 424.0 << 1;
        QTest::newRow("below all") << 9000.0 << 2;
    }

    void aHeightBelongsToThePageThereOrAbove()
    {
        QFETCH(double, y);
        QTEST(PdfLayout(pages, 2, 300).pageAt(y), "page");
    }

    void placesAndPointsAgree()
    {
        const PdfLayout layout(pages, 2, 300);
        const PdfPoint point = layout.pointAt({110, 444});
        QCOMPARE(point.page, 1);
        QCOMPARE(point.point, QPointF(5, 10));
        QCOMPARE(layout.placeOf(1, {5, 10, 20, 30}), QRectF(110, 444, 40, 60));
    }
};

QTEST_APPLESS_MAIN(PdfLayoutTests)
#include "PdfLayoutTests.moc"
