#include "Decoder/PdfLinks.h"

#include "Support/DamagedFiles.h"
#include "Support/PdfFiles.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class PdfLinksTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Before anything that starts threads.
    void damagedFilesDoNoHarm()
    {
        QVERIFY(survivesDamage(pdfWithLinks("https://exempel.se/"), [](const QByteArray& bytes) {
            const PdfLinks links(bytes, {});
            for (const int page : {0, 1})
                static_cast<void>(links.of(page));
        }));
    }

    void linksLeadToAddressesAndToPages()
    {
        const PdfLinks links(pdfWithLinks("https://exempel.se/"), {});
        const QList<PdfLink> first = links.of(0);
        QCOMPARE(first.size(), 2);
        QCOMPARE(first[0].address, QUrl(u"https://exempel.se/"_s));
        QCOMPARE(first[0].area, QRectF(100, 92, 200, 50));
        QVERIFY(first[1].address.isEmpty());
        QCOMPARE(first[1].target.page, 1);
        QCOMPARE(first[1].target.point.y(), 842.0 - 400);
        QVERIFY(links.of(1).isEmpty());
    }

    void whatIsNoDocumentHasNone()
    {
        QVERIFY(PdfLinks("hej", {}).of(0).isEmpty());
        QVERIFY(PdfLinks(pdfWithLinks("https://exempel.se/"), {}).of(17).isEmpty());
        QVERIFY(PdfLinks(pdfWithLinks("https://exempel.se/"), {}).of(-1).isEmpty());
    }
};

QTEST_GUILESS_MAIN(PdfLinksTests)
#include "PdfLinksTests.moc"
