#include "Decoder/QuickLookBook.h"

#include "Fakes/Bucket.h"
#include "Support/Programs.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

constexpr auto container =
    R"(<container><rootfiles><rootfile full-path="OPS/bok.opf"/></rootfiles></container>)";
constexpr auto package = R"(<package xmlns:dc="x"><metadata><dc:title>Räven</dc:title><dc:creator>Anna
 Berg</dc:creator></metadata><manifest>
<item id="o" href="omslag.png" properties="cover-image" media-type="image/png"/>
<item id="b" href="text/tv%C3%A5.xhtml"/><item id="a" href="text/ett.xhtml"/></manifest>
<spine><itemref idref="a"/><itemref idref="saknas"/><itemref idref="b"/></spine></package>)";

/// A book on disk.
class BookFile final
{
public:
    BookFile()
        : bucket{{"in/META-INF/container.xml", container},
                 {"in/OPS/bok.opf", package},
                 {"in/OPS/omslag.png", "bild"},
                 {"in/OPS/text/ett.xhtml",
                  "<html><body><h1>Början</h1><p>Det var en gång.</p><img src='../omslag.png'/>"
                  "<img src='../../../../etc/passwd'/></body></html>"},
                 {"in/OPS/text/två.xhtml", "<html><body><h1>Slutet</h1><script>x()</script></body></html>"}}
    {
        QProcess process;
        process.setWorkingDirectory(bucket.folder(u"in"_s).path());
        process.start(u"zip"_s, {u"-qr"_s, bucket.file(u"b.epub"_s).path(), u"."_s});
        if (!process.waitForFinished() || process.exitCode() != 0)
            qFatal("cannot make the book");
    }

    Bucket bucket;
};

} // namespace

class QuickLookBookTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aBookIsItsCoverItsContentsAndItsText()
    {
        const BookFile book;

        const auto page = bookPage(book.bucket.file(u"b.epub"_s), QuickLookLimits());

        QVERIFY(page);
        QCOMPARE(QString::fromUtf8(page->body),
                 u"<article><img class=\"cover\" alt=\"Omslag\" src=\"/r/OPS/omslag.png\"><h1>Räven</h1>"
                 "<p class=\"muted\">Anna Berg</p><nav><ol><li><a href=\"#k1\">Början</a></li>"
                 "<li><a href=\"#k2\">Slutet</a></li></ol></nav>"
                 "<section id=\"k1\"><h1>Början</h1><p>Det var en gång.</p>"
                 "<img src=\"/r/OPS/omslag.png\" alt=\"\"></section>"
                 "<section id=\"k2\"><h1>Slutet</h1></section></article>"_s);
        QCOMPARE(page->resources.keys(), QStringList{u"OPS/omslag.png"_s});
        QCOMPARE(page->resources.value(u"OPS/omslag.png"_s).bytes, QByteArray("bild"));
    }

    void whatIsNoBookGivesNothing()
    {
        const Bucket bucket{{"a.epub", "ingen bok"}, {"in/x", "1"}};
        runProgram(u"zip"_s, {u"-qj"_s, bucket.file(u"b.epub"_s).path(), bucket.file(u"in/x"_s).path()});

        QVERIFY(!bookPage(bucket.file(u"a.epub"_s), QuickLookLimits()));
        QVERIFY(!bookPage(bucket.file(u"b.epub"_s), QuickLookLimits()));
    }

    void aBookThatBreaksOffEndsSomehow()
    {
        const BookFile book;
        const QByteArray whole = book.bucket.read(u"b.epub"_s);
        for (qsizetype size = 0; size < whole.size(); size += 7) {
            book.bucket.write(u"d.epub"_s, whole.first(size));
            const auto page = bookPage(book.bucket.file(u"d.epub"_s), QuickLookLimits());
            QVERIFY(!page || page->body.endsWith("</article>"));
        }
    }
};

QTEST_GUILESS_MAIN(QuickLookBookTests)
#include "QuickLookBookTests.moc"
