#include "Decoder/QuickLookHighlighting.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

QByteArray marked(const QString& text, const QString& extension)
{
    QByteArray markup;
    highlight(text, extension, [&markup](QByteArrayView piece) { markup += piece; });
    return markup;
}

} // namespace

class QuickLookHighlightingTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wordsOfTheLanguageAreMarked_data()
    {
        QTest::addColumn<QString>("extension");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("markup");
        QTest::newRow("word, number, comment")
            << u"cpp"_s << u"return 1; // slut"_s
            << QByteArray("<i class=k>return</i> <i class=n>1</i>; <i class=c>// slut</i>");
        QTest::newRow("comment over lines")
            << u"c"_s << u"/* a\nb */ x"_s << QByteArray("<i class=c>/* a</i>\n<i class=c>b */</i> x");
        QTest::newRow("string with an escape")
            << u"py"_s << u"x = \"a\\\"b\" # c"_s
            << QByteArray("x = <i class=s>&quot;a\\&quot;b&quot;</i> <i class=c># c</i>");
        QTest::newRow("open string ends with its line")
            << u"py"_s << u"'a\nif"_s << QByteArray("<i class=s>'a</i>\n<i class=k>if</i>");
        QTest::newRow("JSON") << u"json"_s << u"{\"a\": true}"_s
                              << QByteArray("{<i class=p>&quot;a&quot;</i>: <i class=k>true</i>}");
        QTest::newRow("YAML") << u"yml"_s << u"namn: x # y"_s
                              << QByteArray("<i class=p>namn</i>: x <i class=c># y</i>");
        QTest::newRow("XML") << u"xml"_s << u"<a b=\"1\">t</a><!-- k -->"_s
                             << QByteArray(
                                    "<i class=k>&lt;a b=&quot;1&quot;&gt;</i>t<i class=k>&lt;/a&gt;</i>"
                                    "<i class=c>&lt;!-- k --&gt;</i>");
        QTest::newRow("SQL in any case")
            << u"sql"_s << u"select Namn"_s << QByteArray("<i class=k>select</i> Namn");
        QTest::newRow("log") << u"log"_s << u"12 ERROR x"_s
                             << QByteArray("<i class=n>12</i> <i class=k>ERROR</i> x");
        QTest::newRow("unknown") << u"xyz"_s << u"if <b> 1"_s << QByteArray("if &lt;b&gt; 1");
    }

    void wordsOfTheLanguageAreMarked()
    {
        QFETCH(const QString, extension);
        QFETCH(const QString, text);
        QFETCH(const QByteArray, markup);

        QCOMPARE(marked(text, extension), markup);
    }

    void anyTextStaysWhatItIs_data()
    {
        QTest::addColumn<QString>("extension");
        for (const char* extension : {"cpp", "py", "sql", "xml", "json", "yaml", "css", "log", "ini", "xyz"})
            QTest::newRow(extension) << QString::fromLatin1(extension);
    }

    void anyTextStaysWhatItIs()
    {
        QFETCH(const QString, extension);
        QRandomGenerator random(7);
        const QString letters = u"ab1<>\"'`/*#-;:=\\\n @&ö!.\t{}"_s;

        for (int round = 0; round < 300; ++round) {
            QString text;
            for (int i = random.bounded(60); i > 0; --i)
                text += letters[random.bounded(int(letters.size()))];
            QString shown = QString::fromUtf8(marked(text, extension));
            shown.remove(QRegularExpression(u"</?i[^>]*>"_s));
            QCOMPARE(shown, text.toHtmlEscaped());
        }
    }

    void hostileTextsTakeNoLongerThanOthers_data()
    {
        QTest::addColumn<QString>("unit");
        QTest::newRow("open strings") << u"\""_s;
        QTest::newRow("open comments") << u"/* "_s;
        QTest::newRow("open tags") << u"<"_s;
        QTest::newRow("backslashes") << u"\\"_s;
        QTest::newRow("one word") << u"a"_s;
    }

    void hostileTextsTakeNoLongerThanOthers()
    {
        QFETCH(const QString, unit);
        for (const QString& extension : {u"cpp"_s, u"xml"_s, u"json"_s})
            QVERIFY(!marked(unit.repeated(2'000'000 / unit.size()), extension).isEmpty());
    }
};

QTEST_GUILESS_MAIN(QuickLookHighlightingTests)
#include "QuickLookHighlightingTests.moc"
