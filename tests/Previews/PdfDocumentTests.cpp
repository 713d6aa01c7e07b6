#include "Previews/PdfDocument.h"

#include "Fakes/Bucket.h"
#include "Support/PdfFiles.h"

#include <QElapsedTimer>
#include <QtConcurrent>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

using State = PdfDocument::State;

namespace {

/// A document with one page of that size in points, on which `content` draws.
QByteArray pdfWithPage(const QByteArray& size, const QByteArray& content, const QByteArray& more = {})
{
    return "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
           "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
           "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 " +
           size + "]/Contents 4 0 R/Resources<</XObject<</P 5 0 R>>>>>>endobj\n4 0 obj<</Length " +
           QByteArray::number(content.size()) + ">>stream\n" + content + "\nendstream endobj\n" + more +
           "\ntrailer<</Root 1 0 R>>\n%%EOF\n";
}

/// The picture that the pages above may draw: all of one colour, and as large as a few bytes can say.
QByteArray hugePicture(int side)
{
    const QByteArray bytes = QByteArray::number(side);
    return "5 0 obj<</Type/XObject/Subtype/Image/Width " + bytes + "/Height " + bytes +
           "/BitsPerComponent 8/ColorSpace/DeviceRGB/Filter/FlateDecode/Length 8>>stream\n" +
           QByteArray::fromHex("789c030000000001") + "\nendstream endobj\n";
}

} // namespace

class PdfDocumentTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aDocumentIsOpenedAndDrawn()
    {
        PdfDocument document;
        QCOMPARE(document.open(pdfOf({u"Ett möte"_s, u"Två"_s}), {}), State::ready);
        QCOMPARE(document.pageSizes().size(), 2);

        const QImage page = document.render(0, {595, 842}, {0, 0, 595, 842});

        QCOMPARE(page.size(), QSize(595, 842));
        QCOMPARE(page.pixelColor(5, 5), QColor(Qt::white));
        QVERIFY(document.text(0).text.contains(u"Ett möte"_s));
        QCOMPARE(document.find(0, u"MÖTE"_s).size(), 1);
        QString text;
        QCOMPARE(document.textBetween({0, {0, 0}}, {1, {500, 800}}, &text).size(), 2);
        QVERIFY(text.contains(u"Två"_s));
    }

    void aFileIsOpenedWhereItLies()
    {
        const Bucket bucket;
        bucket.write(u"A.pdf"_s, pdfOf({u"Ett"_s}));
        PdfDocument document;
        QCOMPARE(document.open(bucket.file(u"A.pdf"_s), {}), State::ready);
        QCOMPARE(document.pageSizes().size(), 1);
        QCOMPARE(document.open(bucket.file(u"Borta.pdf"_s), {}), State::damaged);
        QVERIFY(document.pageSizes().isEmpty());
    }

    void theSizesOfManyPagesAreReadPieceByPiece()
    {
        PdfDocument document;
        const QList<QSize> pages = QList<QSize>(150, {200, 300}) + QList<QSize>(100, {700, 100});
        QCOMPARE(document.open(pdfOfSizes(pages), {}), State::ready);
        QCOMPARE(document.pageSizes(), QList<QSizeF>(250, {200, 300}));
        int pieces = 0;
        while (document.readPageSizes())
            ++pieces;
        QVERIFY(pieces > 0);
        QCOMPARE(document.pageSizes(), QList<QSizeF>(pages.begin(), pages.end()));
    }

    void aFileThatIsCutWhileItIsShownHarmsOnlyItsDrawing()
    {
        const Bucket bucket;
        const QByteArray whole = pdfOf({u"Ett"_s, u"Två"_s});
        bucket.write(u"A.pdf"_s, whole);
        PdfDocument document;
        QCOMPARE(document.open(bucket.file(u"A.pdf"_s), {}), State::ready);
        bucket.write(u"A.pdf"_s, {});

        for (const int page : {1, 0})
            static_cast<void>(document.render(page, {60, 80}, {0, 0, 60, 80}));
        QVERIFY(document.render(0, {60, 80}, {0, 0, 60, 80}).isNull());

        bucket.write(u"A.pdf"_s, whole);
        QCOMPARE(document.open(bucket.file(u"A.pdf"_s), {}), State::ready);
        QCOMPARE(document.render(0, {60, 80}, {0, 0, 60, 80}).size(), QSize(60, 80));
    }

    void severalThreadsTakeTurns()
    {
        PdfDocument document;
        QCOMPARE(document.open(pdfOf({u"Ett"_s, u"Två"_s, u"Tre"_s}), {}), State::ready);
        QList<int> pages;
        for (int i = 0; i < 60; ++i)
            pages.append(i % 3);
        const auto sizes = QtConcurrent::blockingMapped(pages, [&document](int page) {
            return document.render(page, {60, 80}, {0, 0, 60, 80}).size();
        });
        QCOMPARE(sizes, QList<QSize>(60, QSize(60, 80)));
    }

    void aDrawingThatTakesTooMuchMemoryFailsAlone()
    {
        PdfDocument document;
        QCOMPARE(document.open(pdfOf({u"Ett"_s}), {}), State::ready);
        QVERIFY(document.render(0, {60'000, 60'000}, {0, 0, 60'000, 60'000}).isNull());
        QCOMPARE(document.render(0, {60, 80}, {0, 0, 60, 80}).size(), QSize(60, 80));
    }

    void aHugePageIsDrawn()
    {
        PdfDocument document;
        QCOMPARE(document.open(pdfWithPage("14400 14400", "1 0 0 rg 0 0 14400 14400 re f"), {}),
                 State::ready);
        QCOMPARE(document.render(0, {800, 800}, {0, 0, 800, 800}).pixelColor(400, 400), QColor(Qt::red));
        // Closely: a part of a page of 200 times 200 inches.
        const QRect part(100'000, 100'000, 500, 500);
        QCOMPARE(document.render(0, {230'400, 230'400}, part).pixelColor(250, 250), QColor(Qt::red));
    }

    void aHugePictureHarmsOnlyItsPage()
    {
        PdfDocument document;
        QCOMPARE(
            document.open(pdfWithPage("600 600", "q 600 0 0 600 0 0 cm /P Do Q", hugePicture(60'000)), {}),
            State::ready);
        static_cast<void>(document.render(0, {600, 600}, {0, 0, 600, 600}));
        QCOMPARE(document.open(pdfOf({u"Ett"_s}), {}), State::ready);
    }

    void aClosedDocumentAnswersNoMore()
    {
        PdfDocument document;
        QCOMPARE(document.open(pdfOf({u"Ett"_s}), {}), State::ready);
        // A page that takes much longer than anybody waits.
        QByteArray content;
        for (int i = 0; i < 300'000; ++i)
            content += "0 0 m 600 600 100 " + QByteArray::number(i % 600) + " 50 60 c S\n";
        QCOMPARE(document.open(pdfWithPage("600 600", content), {}), State::ready);
        const auto drawn = QtConcurrent::run([&document] {
            return document.render(0, {2400, 2400}, {0, 0, 2400, 2400}).isNull();
        });
        document.close();
        QVERIFY(drawn.result());
        QVERIFY(document.render(0, {60, 80}, {0, 0, 60, 80}).isNull());
    }
};

QTEST_MAIN(PdfDocumentTests)
#include "PdfDocumentTests.moc"
