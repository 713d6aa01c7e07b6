#include "Look/ProgressIndicator.h"

#include "Support/Window.h"

#include <QTest>

using namespace wendlore;

namespace {

int colorsOf(const QImage& picture)
{
    QSet<QRgb> colors;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            colors.insert(picture.pixel(x, y));
    }
    return int(colors.size());
}

} // namespace

class ProgressIndicatorTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itShowsOnlyWhenSomethingTakesItsTime()
    {
        useProductLook();
        ProgressIndicator indicator;
        QCOMPARE(colorsOf(pictureOf(indicator)), 1);
        showAt(indicator, indicator.size());
        QTRY_VERIFY(colorsOf(pictureOf(indicator)) > 3);
    }
};

QTEST_MAIN(ProgressIndicatorTests)
#include "ProgressIndicatorTests.moc"
