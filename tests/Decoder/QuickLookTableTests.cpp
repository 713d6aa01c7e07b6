#include "Decoder/QuickLookTable.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

QByteArray pageOf(const QString& text)
{
    TextBeginning beginning;
    beginning.text = text;
    return tablePage(beginning).body;
}

} // namespace

class QuickLookTableTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cellsAreReadAsSpreadsheetsWriteThem_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QList<QStringList>>("rows");
        QTest::newRow("plain") << u"a,b\nc,d\n"_s << QList<QStringList>{{u"a"_s, u"b"_s}, {u"c"_s, u"d"_s}};
        QTest::newRow("no last line feed") << u"a\r\nb"_s << QList<QStringList>{{u"a"_s}, {u"b"_s}};
        QTest::newRow("separator in quotes") << u"\"a,b\",c"_s << QList<QStringList>{{u"a,b"_s, u"c"_s}};
        QTest::newRow("line feed in quotes") << u"\"a\nb\""_s << QList<QStringList>{{u"a\nb"_s}};
        QTest::newRow("quotes in quotes") << u"\"a \"\"b\"\"\""_s << QList<QStringList>{{u"a \"b\""_s}};
        QTest::newRow("open quotes") << u"\"a,b"_s << QList<QStringList>{{u"a,b"_s}};
        QTest::newRow("empty cells") << u",,"_s << QList<QStringList>{{QString(), QString(), QString()}};
        QTest::newRow("lone carriage return") << u"a\rb"_s << QList<QStringList>{{u"a"_s}, {u"b"_s}};
        QTest::newRow("nothing") << QString() << QList<QStringList>{};
    }

    void cellsAreReadAsSpreadsheetsWriteThem()
    {
        QFETCH(const QString, text);
        QFETCH(const QList<QStringList>, rows);

        QCOMPARE(tableRows(text, u',', 1000), rows);
    }

    void theSeparatorIsFoundInTheFirstLine_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QChar>("separator");
        QTest::newRow("comma") << u"a,b;c,d"_s << QChar(u',');
        QTest::newRow("semicolon") << u"a;b;c,d\n,,,,,"_s << QChar(u';');
        QTest::newRow("tabulator") << u"a\tb"_s << QChar(u'\t');
    }

    void theSeparatorIsFoundInTheFirstLine()
    {
        QFETCH(const QString, text);
        QFETCH(const QChar, separator);

        QCOMPARE(separatorOf(text), separator);
    }

    void theFirstLineIsTheHeadAndNumbersStandToTheRight()
    {
        QCOMPARE(pageOf(u"Post,Kronor\nHyra,\"8 500,00\"\n"_s),
                 QByteArray("<table><thead><tr><th>Post</th><th>Kronor</th></tr></thead>"
                            "<tr><td>Hyra</td><td class=\"number\">8 500,00</td></tr></table>"));
    }

    void cellsAreNoMarkup() { QVERIFY(pageOf(u"<img src=x>"_s).contains("<th>&lt;img src=x&gt;</th>")); }

    void aHugeTableIsCut()
    {
        const QByteArray page = pageOf(u"a,b\n"_s.repeated(60'000));

        QVERIFY(page.startsWith("<p class=\"notice\">Här visas de första 25000 raderna.</p>"));
        QCOMPARE(page.count("<tr>"), 25'000);
    }
};

QTEST_GUILESS_MAIN(QuickLookTableTests)
#include "QuickLookTableTests.moc"
