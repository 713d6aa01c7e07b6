#include "Decoder/QuickLookDocument.h"

#include "Fakes/Bucket.h"
#include "Support/Programs.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

constexpr auto word =
    R"(<w:document xmlns:w="http://schemas.openxmlformats.org/wordprocessingml/2006/main"><w:body>
<w:p><w:pPr><w:pStyle w:val="Rubrik2"/></w:pPr><w:r><w:t>Mål</w:t></w:r></w:p>
<w:p><w:r><w:t>Ett </w:t><w:tab/><w:t>&lt;två&gt;</w:t><w:br/><w:t>tre</w:t></w:r><w:instrText>dold</w:instrText></w:p>
<w:tbl><w:tr><w:tc><w:p><w:r><w:t>cell</w:t></w:r></w:p></w:tc></w:tr></w:tbl></w:body></w:document>)";

constexpr auto open = R"(<o:c xmlns:o="a" xmlns:text="b" xmlns:table="c"><style>dold</style>
<text:h text:outline-level="2">Mål</text:h><text:p>Ett <text:span>två</text:span><text:s/>tre</text:p>
<table:table><table:table-row><table:table-cell><text:p>cell</text:p></table:table-cell></table:table-row>
</table:table></o:c>)";

/// A document in a zip file, made by the system's own program.
FileURL document(const Bucket& bucket, const QString& name, const QString& part, const QByteArray& xml)
{
    bucket.write(u"in/"_s + part, xml);
    runProgram(u"sh"_s, {u"-c"_s, u"cd \"$1\" && zip -qr \"$2\" ."_s, u"sh"_s, bucket.folder(u"in"_s).path(),
                         bucket.file(name).path()});
    return bucket.file(name);
}

} // namespace

class QuickLookDocumentTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTextOfADocumentIsShown_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("part");
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<QByteArray>("paragraph");
        QTest::newRow("docx") << u"a.docx"_s << u"word/document.xml"_s << QByteArray(word)
                              << QByteArray("<p>Ett \t&lt;två&gt;<br>tre</p>");
        QTest::newRow("odt") << u"a.odt"_s << u"content.xml"_s << QByteArray(open)
                             << QByteArray("<p>Ett två tre</p>");
    }

    void theTextOfADocumentIsShown()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, part);
        QFETCH(const QByteArray, xml);
        QFETCH(const QByteArray, paragraph);
        const Bucket bucket;

        const auto page = documentTextPage(document(bucket, name, part, xml), QuickLookLimits());

        QVERIFY(page);
        QCOMPARE(page->body,
                 "<p class=\"notice\">Dokumentets text, utan dess utseende.</p><article><h2>Mål</h2>" +
                     paragraph + "<table><tr><td><p>cell</p></table></article>");
    }

    void aDocumentThatIsNoneGivesNothing()
    {
        const Bucket bucket{{"a.docx", "inget"}, {"a.xlsx", "inget"}};

        QVERIFY(!documentTextPage(bucket.file(u"a.docx"_s), QuickLookLimits()));
        QVERIFY(!documentTextPage(bucket.file(u"a.xlsx"_s), QuickLookLimits()));
        QVERIFY(!documentTextPage(document(bucket, u"b.odt"_s, u"content.xml"_s, "<a>"), QuickLookLimits()));
    }

    void tablesInTablesEnd()
    {
        const Bucket bucket;
        const QByteArray xml = QByteArray("<table><table-row><table-cell>").repeated(20'000) + "<p>a</p>";

        const auto page =
            documentTextPage(document(bucket, u"a.odt"_s, u"content.xml"_s, xml), QuickLookLimits());

        QVERIFY(page);
        QCOMPARE(page->body.count("<table>"), 8);
    }
};

QTEST_GUILESS_MAIN(QuickLookDocumentTests)
#include "QuickLookDocumentTests.moc"
