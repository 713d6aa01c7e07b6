#include "Previews/QuickLookFit.h"

#include <QTest>

using namespace wendlore;

class QuickLookFitTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPageIsScaledToTheWidthOfTheView_data()
    {
        QTest::addColumn<QSizeF>("container");
        QTest::addColumn<QSizeF>("webView");
        QTest::addColumn<double>("zoom");
        QTest::addColumn<double>("pageWidth");
        QTest::addColumn<double>("target"); // 0 for nothing to do
        const QSizeF view(1000, 700);
        QTest::newRow("first layout") << view << QSizeF(800, 700) << 1.0 << 800.0 << 1.25;
        QTest::newRow("narrower view") << QSizeF(400, 700) << view << 1.25 << 800.0 << 0.5;
        QTest::newRow("as it should be") << view << view << 1.25 << 800.0 << 0.0;
        QTest::newRow("zoom within the tolerance") << view << view << 1.2515 << 800.0 << 0.0;
        QTest::newRow("zoom outside of it") << view << view << 1.2525 << 800.0 << 1.25;
        QTest::newRow("frame within the tolerance") << view << QSizeF(999.5, 700.5) << 1.25 << 800.0 << 0.0;
        QTest::newRow("lower than the view") << view << QSizeF(1000, 650) << 1.25 << 800.0 << 1.25;
        QTest::newRow("unknown page") << view << view << 1.0 << 0.0 << 0.0;
        QTest::newRow("no room") << QSizeF(1, 700) << QSizeF(1, 700) << 1.25 << 800.0 << 0.0;
    }

    void aPageIsScaledToTheWidthOfTheView()
    {
        QFETCH(const QSizeF, container);
        QFETCH(const QSizeF, webView);
        QFETCH(const double, zoom);
        QFETCH(const double, pageWidth);
        QFETCH(const double, target);

        const QuickLookFit fit{container, webView, zoom, pageWidth};

        QCOMPARE(fit.zoomToApply().value_or(0), target);
    }

    void thePageIsAsWideAsTheNarrowestFrameAtZoomOne_data()
    {
        QTest::addColumn<double>("frame");
        QTest::addColumn<double>("zoom");
        QTest::addColumn<double>("known");
        QTest::addColumn<double>("pageWidth");
        QTest::newRow("none known") << 800.0 << 1.0 << 0.0 << 800.0;
        QTest::newRow("narrower than known") << 700.0 << 1.019 << 800.0 << 700.0;
        QTest::newRow("wider than known") << 900.0 << 1.0 << 800.0 << 800.0;
        QTest::newRow("scaled") << 700.0 << 1.02 << 800.0 << 800.0;
        QTest::newRow("not laid out") << 1.0 << 1.0 << 0.0 << 0.0;
    }

    void thePageIsAsWideAsTheNarrowestFrameAtZoomOne()
    {
        QFETCH(const double, frame);
        QFETCH(const double, zoom);
        QFETCH(const double, known);
        QFETCH(const double, pageWidth);

        const QuickLookFit fit{{1000, 700}, {frame, 700}, zoom, known};

        QCOMPARE(fit.pageWidth(), pageWidth);
    }
};

QTEST_GUILESS_MAIN(QuickLookFitTests)
#include "QuickLookFitTests.moc"
