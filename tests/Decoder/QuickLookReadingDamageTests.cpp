#include "Decoder/QuickLookReading.h"

#include "Fakes/Bucket.h"
#include "Previews/GoogleDocPointer.h"
#include "Previews/HtmlAddress.h"
#include "Support/DamagedFiles.h"
#include "Support/SampleFiles.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace wendlore;

namespace {

const QByteArray xhtml = "<html><head><title>Ett</title></head><body><h1>Bör&auml;n</h1><p>Det <b>var</b> en "
                         "gång</p><table><tr><td>1</td></tr></table><img src='../a.png'/></body></html>";

const SampleFiles book{
    {u"META-INF/container.xml"_s,
     "<container><rootfiles><rootfile full-path='OPS/b.opf'/></rootfiles></container>"},
    {u"OPS/b.opf"_s,
     "<package><metadata><title>Räv</title></metadata><manifest><item id='a' href='t/a.xhtml'/>"
     "<item id='o' href='o.png' properties='cover-image'/></manifest><spine><itemref "
     "idref='a'/></spine></package>"},
    {u"OPS/o.png"_s, "bild"},
    {u"OPS/t/a.xhtml"_s, xhtml}};
const SampleFiles wordDocument{
    {u"word/document.xml"_s,
     "<w:document xmlns:w='w'><w:body><w:p><w:pPr><w:pStyle w:val='Heading1'/></w:pPr><w:r><w:t>Rubrik</w:t>"
     "</w:r></w:p><w:tbl><w:tr><w:tc><w:p><w:r><w:t>1</w:t></w:r></w:p></w:tc></w:tr></w:tbl></w:body>"
     "</w:document>"}};
const SampleFiles openDocument{
    {u"content.xml"_s,
     "<office:document-content xmlns:office='o' xmlns:text='t' xmlns:table='b'><office:body><office:text>"
     "<text:h text:outline-level='1'>Rubrik</text:h><text:p>Text<text:tab/><text:s text:c='3'/></text:p>"
     "<table:table><table:table-row><table:table-cell><text:p>1</text:p></table:table-cell></table:table-row>"
     "</table:table></office:text></office:body></office:document-content>"},
    {u"Thumbnails/thumbnail.png"_s, "bild"}};
const SampleFiles package{{u"QuickLook/Thumbnail.jpg"_s, "bild"}, {u"QuickLook/Preview.pdf"_s, "%PDF-1.4"}};

const QByteArray mail =
    "From: =?utf-8?B?w4VzYQ==?= <a@exempel.se>\nSubject: =?utf-8?Q?M=C3=B6te?=\n"
    "Content-Type: multipart/mixed; boundary=\"x\"\n\n--x\nContent-Type: text/plain; "
    "charset=iso-8859-1\nContent-Transfer-Encoding: quoted-printable\n\nHej =E5\n--x\n"
    "Content-Type: text/html\nContent-Transfer-Encoding: base64\n\nPGI+SGVqPC9iPg==\n--x\n"
    "Content-Disposition: attachment; filename=\"a.txt\"\n\nx\n--x--\n";

/// Without sums, so that what is damaged reaches those who read what is in it.
QByteArray unchecked(const SampleFiles& files)
{
    return packed(files, u"tar"_s);
}

} // namespace

/// Every kind of file that previews are made of in the process that decodes, damaged again and again. What is
/// drawn by the web engine or by LibreOffice is read in their processes.
class QuickLookReadingDamageTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void damagedFilesDoNoHarm_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        const auto add = [](const QString& name, const QByteArray& bytes) {
            QTest::newRow(qPrintable(name)) << name << bytes;
        };
        add(u"a.csv"_s, "namn;antal\n\"Å \"\"sa\"\"\";1\nBo;\"2\n3\"\n");
        add(u"a.json"_s, R"({"a": [1, 2.5e3, "text\n", null], "b": {"c": true}})");
        add(u"a.cpp"_s, "#include <x>\n/* två */ int a = 0x1f; // slut\nchar b[] = \"c\\\"\";\n");
        add(u"a.xml"_s, "<?xml version='1.0'?><a b='c'><!-- d --><![CDATA[e]]>&amp;</a>");
        add(u"a.yaml"_s, "a: 1\nb:\n  - 'två'\n  - \"tre\"\n# slut\n");
        add(u"utf16.log"_s, QByteArray::fromHex("fffe4800650069000a00e5000a00"));
        add(u"a.eml"_s, mail);
        for (const auto& format : {u"zip"_s, u"tar"_s, u"tar.gz"_s, u"tar.xz"_s})
            add(u"a."_s + format, packed(book, format));
        add(u"zip.epub"_s, packed(book, u"zip"_s));
        add(u"a.epub"_s, unchecked(book));
        add(u"a.docx"_s, unchecked(wordDocument));
        add(u"a.odt"_s, unchecked(openDocument));
        add(u"a.svg"_s, "<svg xmlns='http://www.w3.org/2000/svg'><g id='a'><path d='M0 0'/></g></svg>");
        add(u"a.pages"_s, unchecked(package));
        add(u"a.ogg"_s, mediaFile(u"a.ogg"_s));
    }

    void damagedFilesDoNoHarm()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        const Bucket bucket;
        bucket.write(u"in/"_s + name, bytes);
        const auto hasPreview = [&] {
            const QuickLookFile file(bucket.file(u"in/"_s + name));
            const QuickLookLimits limits(5s);
            const bool hasPages = !readDocumentPages(file, limits).isEmpty();
            const bool hasText = readDocumentPreview(file, limits) || readFilePreview(file, limits);
            return hasPages || hasText;
        };
        QVERIFY2(hasPreview(), "whole, it has a preview");

        QVERIFY(survivesDamage(bytes, [&](const QByteArray& damaged) {
            bucket.write(u"in/"_s + name, damaged);
            static_cast<void>(hasPreview());
        }));

        QCOMPARE(QDir(bucket.folder(u"in"_s).path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList{name});
        QCOMPARE(bucket.names(), QStringList{u"in"_s});
    }

    void damagedPointersAndPagesDoNoHarm()
    {
        const auto file = FileURL::file(u"/GoogleDrive-a@exempel.se/A.gdoc"_s);
        QVERIFY(survivesDamage(R"({"url": "https://docs.google.com/document/d/X/edit#a", "doc_id": "X"})",
                               [&file](const QByteArray& bytes) {
                                   static_cast<void>(GoogleDocPointer::previewURL(file, bytes));
                               }));
        QVERIFY(survivesDamage(xhtml, [](const QByteArray& bytes) { static_cast<void>(htmlAsUtf8(bytes)); }));
    }
};

QTEST_GUILESS_MAIN(QuickLookReadingDamageTests)
#include "QuickLookReadingDamageTests.moc"
