#include "Decoder/QuickLookMarkup.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

SafeMarkup clean(const QByteArray& xhtml)
{
    return safeMarkup(
        xhtml, [](const QString& source) { return source == u"a.png"_s ? u"/r/a.png"_s : QString(); },
        QuickLookLimits());
}

} // namespace

class QuickLookMarkupTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyWhatGivesATextItsShapeIsKept_data()
    {
        QTest::addColumn<QByteArray>("xhtml");
        QTest::addColumn<QByteArray>("markup");
        QTest::newRow("elements") << QByteArray("<body><p class='x'>a <em>b</em></p><hr/></body>")
                                  << QByteArray("<p>a <em>b</em></p><hr>");
        QTest::newRow("attributes") << QByteArray("<p onclick='x()' style='y'>a</p>")
                                    << QByteArray("<p>a</p>");
        QTest::newRow("script") << QByteArray("<div><script>x<b>y</b></script>a</div>")
                                << QByteArray("<div>a</div>");
        QTest::newRow("links are their text")
            << QByteArray("<p><a href='https://x'>a</a></p>") << QByteArray("<p>a</p>");
        QTest::newRow("known image") << QByteArray("<p><img src='a.png'/></p>")
                                     << QByteArray("<p><img src=\"/r/a.png\" alt=\"\"></p>");
        QTest::newRow("drawn image") << QByteArray("<svg><image xlink:href='a.png'/></svg>")
                                     << QByteArray("<img src=\"/r/a.png\" alt=\"\">");
        QTest::newRow("image elsewhere")
            << QByteArray("<p><img src='https://x/a.png'/></p>") << QByteArray("<p></p>");
        QTest::newRow("markup as text")
            << QByteArray("<p>&lt;b&gt;<![CDATA[<i>]]></p>") << QByteArray("<p>&lt;b&gt;&lt;i&gt;</p>");
        QTest::newRow("named characters")
            << QByteArray("<p>a&nbsp;&aring;&okand;</p>") << QByteArray("<p>a\xc2\xa0\xc3\xa5 </p>");
        QTest::newRow("breaks off") << QByteArray("<div><p>a</p><p>b")
                                    << QByteArray("<div><p>a</p><p></p></div>");
        QTest::newRow("wrong order") << QByteArray("<p><b>a</p>") << QByteArray("<p><b>a</b></p>");
        QTest::newRow("nothing") << QByteArray() << QByteArray();
    }

    void onlyWhatGivesATextItsShapeIsKept()
    {
        QFETCH(const QByteArray, xhtml);
        QFETCH(const QByteArray, markup);

        QCOMPARE(clean(xhtml).body, markup);
    }

    void aChapterIsCalledByItsFirstHeading()
    {
        QCOMPARE(clean("<html><head><title>T</title></head><body><h1>A <i>b</i></h1><h2>C</h2></body></html>")
                     .title,
                 u"A b"_s);
        QCOMPARE(clean("<html><head><title>T</title></head><body><p>a</p></body></html>").title, u"T"_s);
    }

    void deepNestingIsCutOff()
    {
        const QByteArray markup = clean(QByteArray("<div>").repeated(100'000) + "a").body;

        QVERIFY(markup.count("<div>") <= 100);
        QCOMPARE(markup.count("<div>"), markup.count("</div>"));
    }

    void entitiesThatGrowDoNotFillTheMemory()
    {
        QByteArray bomb = "<!DOCTYPE x [<!ENTITY a0 \"haha\">";
        for (int i = 1; i < 20; ++i)
            bomb += "<!ENTITY a" + QByteArray::number(i) + " \"" +
                    QByteArray("&a" + QByteArray::number(i - 1) + ";").repeated(10) + "\">";

        QVERIFY(clean(bomb + "]><p>&a19;</p>").body.size() < 100'000);
    }
};

QTEST_GUILESS_MAIN(QuickLookMarkupTests)
#include "QuickLookMarkupTests.moc"
