#include "Decoder/PdfFile.h"

#include "Fakes/Bucket.h"
#include "Support/DamagedFiles.h"
#include "Support/PdfFiles.h"
#include "Support/Programs.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

using State = PdfState;

class PdfFileTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The first of all: a copied process has none of the threads that drawing starts, and would wait for
    // them.
    void damagedFilesDoNoHarm()
    {
        QVERIFY(survivesDamage(pdfOf({u"Ett\nmöte"_s, u"Två"_s}), [](const QByteArray& bytes) {
            PdfFile document(bytes);
            if (document.open({}) != State::ready)
                return;
            static_cast<void>(document.pageSizes(0));
            static_cast<void>(document.render(0, {100, 140}, {0, 0, 100, 140}));
            static_cast<void>(document.find(0, u"möte"_s));
            static_cast<void>(document.links(0));
        }));
    }

    void aDocumentIsOpened()
    {
        PdfFile document(pdfOf({u"Ett"_s, u"Två"_s}));
        QCOMPARE(document.open({}), State::ready);
        const QList<QSizeF> sizes = document.pageSizes(0);
        QCOMPARE(sizes.size(), 2);
        QVERIFY(std::abs(sizes.first().width() - 595) < 1 && std::abs(sizes.first().height() - 842) < 1);
    }

    void theSizesOfManyPagesAreToldByTheHundred()
    {
        PdfFile document(pdfOfSizes(QList<QSize>(249, {200, 300}) + QList<QSize>{{700, 100}}));
        QCOMPARE(document.open({}), State::ready);
        QCOMPARE(document.pageCount(), 250);
        QCOMPARE(document.pageSizes(0), QList<QSizeF>(100, {200, 300}));
        QCOMPARE(document.pageSizes(200).size(), 50);
        QCOMPARE(document.pageSizes(249), QList<QSizeF>{QSizeF(700, 100)});
        QVERIFY(document.pageSizes(250).isEmpty());
    }

    void whatDoesNotFitIntoTheMemoryIsNotDrawn()
    {
        PdfFile document(pdfOf({u"Ett"_s}));
        QCOMPARE(document.open({}), State::ready);
        QByteArray memory(60 * 80 * 4, 'x');
        const std::span pixels(reinterpret_cast<uchar*>(memory.data()), size_t(memory.size()));

        const QImage drawn = document.render(0, {60, 80}, {0, 0, 60, 80}, pixels);

        QCOMPARE(drawn.constBits(), pixels.data());
        QCOMPARE(drawn.pixelColor(5, 5), QColor(Qt::white));
        QVERIFY(document.render(0, {60, 81}, {0, 0, 60, 81}, pixels).isNull());
    }

    void whatIsNoDocumentIsDamaged_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("text") << QByteArray("hej");
        QTest::newRow("a beginning") << pdfOf({u"Ett"_s}).left(200);
    }

    void whatIsNoDocumentIsDamaged()
    {
        QFETCH(QByteArray, bytes);
        PdfFile document(bytes);
        QCOMPARE(document.open({}), State::damaged);
    }

    void aLockedDocumentWantsItsPassword()
    {
        const Bucket bucket;
        bucket.write(u"A.pdf"_s, pdfOf({u"Hemligt"_s}));
        runProgram(u"qpdf"_s, {u"--encrypt"_s, u"sesam"_s, u"ägare"_s, u"256"_s, u"--"_s,
                               bucket.file(u"A.pdf"_s).path(), bucket.file(u"B.pdf"_s).path()});
        const QByteArray locked = bucket.read(u"B.pdf"_s);
        PdfFile document(locked);

        QCOMPARE(document.open({}), State::locked);
        QCOMPARE(document.open(u"fel"_s), State::locked);
        QCOMPARE(document.open(u"sesam"_s), State::ready);
        QVERIFY(document.text(0).text.contains(u"Hemligt"_s));
    }

    void pagesAreDrawnOnPaper()
    {
        PdfFile document(pdfOf({u"Svart"_s}));
        QCOMPARE(document.open({}), State::ready);

        const QImage whole = document.render(0, {595, 842}, {0, 0, 595, 842});

        QCOMPARE(whole.size(), QSize(595, 842));
        QCOMPARE(whole.pixelColor(5, 5), QColor(Qt::white));
        int dark = 0;
        for (int x = 60; x < 200; ++x) {
            for (int y = 40; y < 80; ++y)
                dark += whole.pixelColor(x, y).lightness() < 100;
        }
        QVERIFY(dark > 50);
    }

    void aPartIsThatPartOfTheWhole()
    {
        PdfFile document(pdfOf({u"MMMMMMMMMM"_s}));
        QCOMPARE(document.open({}), State::ready);
        const QSize size(1190, 1684);
        const QRect part(100, 60, 300, 120);

        const QImage whole = document.render(0, size, {QPoint(), size}).copy(part);
        const QImage alone = document.render(0, size, part);

        QCOMPARE(alone.size(), part.size());
        qint64 difference = 0;
        qint64 ink = 0;
        for (int y = 0; y < part.height(); ++y) {
            for (int x = 0; x < part.width(); ++x) {
                difference +=
                    std::abs(whole.pixelColor(x, y).lightness() - alone.pixelColor(x, y).lightness());
                ink += 255 - whole.pixelColor(x, y).lightness();
            }
        }
        QVERIFY(ink > 0);
        QVERIFY2(difference < ink / 4, "the part shows what the whole shows there");
    }

    void wordsAreFoundWhateverTheirCaseAndLines()
    {
        PdfFile document(pdfOf({u"Ett möte om\nbudgeten, och ett MÖTE till"_s, u"ingenting"_s}));
        QCOMPARE(document.open({}), State::ready);
        QCOMPARE(document.find(0, u"möte"_s).size(), 2);
        QCOMPARE(document.find(0, u"om budgeten"_s).size(), 1);
        QVERIFY(document.find(0, u"saknas"_s).isEmpty());
        QVERIFY(document.find(1, u"möte"_s).isEmpty());
        QVERIFY(document.find(0, u"("_s).isEmpty());
        const PdfMatch first = document.find(0, u"möte"_s).first();
        QCOMPARE(first.page, 0);
        QVERIFY(!first.areas.isEmpty());
        QVERIFY(QRectF(60, 40, 300, 60).contains(first.areas.first()));
    }

    void textIsSelectedOverPages()
    {
        PdfFile document(pdfOf({u"Första raden\nAndra raden"_s, u"Mitten"_s, u"Sista sidan"_s}));
        QCOMPARE(document.open({}), State::ready);
        QString text;
        QCOMPARE(document.textBetween({2, {500, 800}}, {0, {0, 0}}, &text).size(), 3);
        for (const QString& part : {u"Första raden"_s, u"Andra raden"_s, u"Mitten"_s, u"Sista sida"_s})
            QVERIFY2(text.contains(part), qPrintable(text));
    }

    void aPointBesideALineBelongsToIt()
    {
        const QList<QRectF> lines{{100, 100, 200, 20}, {100, 140, 50, 20}};
        QCOMPARE(nearestPoint(lines, {20, 110}).y(), 110.0);
        QVERIFY(lines[0].contains(nearestPoint(lines, {20, 110})));
        QVERIFY(lines[1].contains(nearestPoint(lines, {290, 150})));
        QVERIFY(lines[1].contains(nearestPoint(lines, {120, 900})));
        QCOMPARE(nearestPoint({}, {3, 4}), QPointF(3, 4));
    }
};

QTEST_MAIN(PdfFileTests)
#include "PdfFileTests.moc"
