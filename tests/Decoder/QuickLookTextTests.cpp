#include "Decoder/QuickLookText.h"

#include "Fakes/Bucket.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class QuickLookTextTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTextIsReadInItsEncoding_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("UTF-8") << QByteArray("r\xc3\xa4v") << u"räv"_s;
        QTest::newRow("UTF-8 with mark") << QByteArray("\xef\xbb\xbfr\xc3\xa4v") << u"räv"_s;
        QTest::newRow("UTF-16") << QByteArray("\xff\xfer\0\xe4\0v\0", 8) << u"räv"_s;
        QTest::newRow("Latin-1") << QByteArray("r\xe4v") << u"räv"_s;
    }

    void aTextIsReadInItsEncoding()
    {
        QFETCH(const QByteArray, bytes);
        QFETCH(const QString, text);

        QCOMPARE(decodedText(bytes), text);
    }

    void bytesThatNoTextHasAreNone() { QVERIFY(!decodedText(QByteArray("PK\3\4\0\0", 6))); }

    void aLongTextIsCutAtTheEndOfALine()
    {
        const Bucket bucket{{"a.log", "första\nandra raden"}};

        const auto beginning = readTextBeginning(bucket.file(u"a.log"_s), 12);

        QVERIFY(beginning);
        QCOMPARE(beginning->text, u"första\n"_s);
        QVERIFY(!beginning->isWhole);
        QVERIFY(textPage(*beginning, u"log"_s).body.contains("<p class=\"notice\">Filen är 19 byte."));
    }

    void aWholeTextHasNoNotice()
    {
        const Bucket bucket{{"a.log", "hej"}};

        const auto beginning = readTextBeginning(bucket.file(u"a.log"_s));

        QVERIFY(beginning && beginning->isWhole);
        QCOMPARE(textPage(*beginning, u"log"_s).body, QByteArray("<pre><div>hej</div></pre>"));
    }

    void aFileThatIsMissingGivesNothing() { QVERIFY(!readTextBeginning(FileURL::file(u"/finns/inte"_s))); }

    void linesAreLaidOutInGroups()
    {
        TextBeginning beginning;
        beginning.text = u"rad\n"_s.repeated(250);

        QCOMPARE(textPage(beginning, u"log"_s).body.count("<div>"), 3);
    }
};

QTEST_GUILESS_MAIN(QuickLookTextTests)
#include "QuickLookTextTests.moc"
