#include "Look/Symbols.h"

#include <QFile>
#include <QPainter>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

QStringList namesInTheTable()
{
    QFile table(qEnvironmentVariable("WENDLORE_SOURCE_DIR") + u"/WendloreKit/Resources/symbols.txt"_s);
    if (!table.open(QIODevice::ReadOnly))
        qFatal("cannot read the table of symbols");
    QStringList names;
    for (const QString& line : QString::fromUtf8(table.readAll()).split(u'\n')) {
        if (!line.isEmpty() && line.front().isLower())
            names.append(line.section(u' ', 0, 0));
    }
    return names;
}

/// How much of the picture is drawn on, 0 to 1, and whether all of it is in `color`.
double inkOf(const QPixmap& pixmap, const QColor& color)
{
    const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    double ink = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            ink += pixel.alphaF();
            const int away = std::abs(pixel.red() - color.red()) + std::abs(pixel.green() - color.green()) +
                             std::abs(pixel.blue() - color.blue());
            if (pixel.alpha() == 255 && away > 3)
                return -1;
        }
    }
    return ink / (image.width() * image.height());
}

} // namespace

class SymbolsTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everySymbolIsDrawnInTheColorAskedFor_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString& name : namesInTheTable())
            QTest::newRow(qPrintable(name)) << name;
    }

    void everySymbolIsDrawnInTheColorAskedFor()
    {
        QFETCH(const QString, name);
        const QColor color(0x3d64c9);

        const double ink = inkOf(symbolPixmap(name, color, 16, 2), color);

        QVERIFY2(ink > 0.03 && ink < 0.5, qPrintable(QString::number(ink)));
    }

    void aListHasItsDots()
    {
        const QImage list = symbolPixmap(u"list.bullet"_s, Qt::black, 48, 1).toImage();

        int inked = 0;
        for (int y = 0; y < list.height(); ++y)
            inked += list.pixelColor(6, y).alpha() > 100 ? 1 : 0;

        QVERIFY(inked >= 3);
    }

    void aSymbolHasTheScreensOwnPixels()
    {
        for (const double ratio : {1.0, 1.5, 2.0}) {
            const QPixmap pixmap = symbolPixmap(u"folder"_s, Qt::black, 16, ratio);

            QCOMPARE(pixmap.width(), qRound(16 * ratio));
            QCOMPARE(pixmap.devicePixelRatio(), ratio);
        }
    }

    void aNameWithoutDrawingIsEmpty()
    {
        QVERIFY(symbolPixmap(u"no.such.symbol"_s, Qt::black, 16, 1).isNull());
    }

    void anIconTakesTheColorOfThePen()
    {
        QImage picture(16, 16, QImage::Format_ARGB32);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);

        painter.setPen(Qt::red);
        symbolIcon(u"folder"_s).paint(&painter, picture.rect());
        painter.end();

        QVERIFY(inkOf(QPixmap::fromImage(picture), Qt::red) > 0.03);
    }
};

QTEST_MAIN(SymbolsTests)
#include "SymbolsTests.moc"
