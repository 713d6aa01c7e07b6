#include "Previews/QuickLookEmbedded.h"

#include "Fakes/Bucket.h"
#include "Support/Programs.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class QuickLookEmbeddedTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePictureInADocumentIsShown_data()
    {
        QTest::addColumn<QString>("place");
        QTest::addColumn<QByteArray>("type");
        QTest::newRow("pages") << u"preview.jpg"_s << QByteArray("image/jpeg");
        QTest::newRow("older pages") << u"QuickLook/Thumbnail.jpg"_s << QByteArray("image/jpeg");
        QTest::newRow("odt") << u"Thumbnails/thumbnail.png"_s << QByteArray("image/png");
    }

    void thePictureInADocumentIsShown()
    {
        QFETCH(const QString, place);
        QFETCH(const QByteArray, type);
        const Bucket bucket;
        bucket.write(u"Paket/"_s + place, "bild");
        runProgram(u"tar"_s, {u"-cf"_s, bucket.file(u"a.tar"_s).path(), u"-C"_s,
                              bucket.folder(u"Paket"_s).path(), place});

        for (const FileURL& file : {bucket.file(u"a.tar"_s), bucket.file(u"Paket"_s)}) {
            const auto page = embeddedPreview(file, QuickLookLimits());
            QVERIFY(page);
            QCOMPARE(page->resources.value(u"bild"_s).bytes, QByteArray("bild"));
            QCOMPARE(page->resources.value(u"bild"_s).mimeType, type);
        }
    }

    void thePagesInADocumentAreShown()
    {
        const Bucket bucket;
        const QuickLookCache cache(bucket.folder(u"cache"_s));
        bucket.write(u"Paket.pages/QuickLook/Preview.pdf"_s, "sidor");
        runProgram(u"tar"_s, {u"-cf"_s, bucket.file(u"a.key"_s).path(), u"-C"_s,
                              bucket.folder(u"Paket.pages"_s).path(), u"QuickLook/Preview.pdf"_s});
        bucket.write(u"a.docx"_s, bucket.read(u"a.key"_s));

        const auto ofPackage = embeddedPages(bucket.file(u"Paket.pages"_s), QuickLookLimits(), cache);
        const auto ofFile = embeddedPages(bucket.file(u"a.key"_s), QuickLookLimits(), cache);

        QCOMPARE(ofPackage->file, bucket.file(u"Paket.pages/QuickLook/Preview.pdf"_s));
        QVERIFY(ofFile);
        QFile pages(ofFile->file.path());
        QVERIFY(pages.open(QIODevice::ReadOnly));
        QCOMPARE(pages.readAll(), QByteArray("sidor"));
        QVERIFY(!embeddedPages(bucket.file(u"a.docx"_s), QuickLookLimits(), cache));
        const QuickLookLimits stopped;
        stopped.stop();
        QVERIFY2(embeddedPages(bucket.file(u"a.key"_s), stopped, cache), "they are kept");
    }

    void withoutAPictureThereIsNone()
    {
        const Bucket bucket{{"a.pages", "inget"}, {"b.pages/Index.zip", "1"}};

        QVERIFY(!embeddedPreview(bucket.file(u"a.pages"_s), QuickLookLimits()));
        QVERIFY(!embeddedPreview(bucket.file(u"b.pages"_s), QuickLookLimits()));
        const QuickLookCache cache(bucket.folder(u"cache"_s));
        for (const auto& name : {u"a.pages"_s, u"b.pages"_s})
            QVERIFY(!embeddedPages(bucket.file(name), QuickLookLimits(), cache));
    }

    void aPackageIsAListOfItsFiles()
    {
        const Bucket bucket{{"b.pages/Index.zip", "1"}, {"b.pages/Data/a.png", "12"}, {"tom.pages/", ""}};

        const auto page = packagePage(bucket.file(u"b.pages"_s), QuickLookLimits());

        QVERIFY(page);
        QVERIFY(page->body.indexOf("Data/a.png") < page->body.indexOf("Index.zip"));
        QVERIFY(!packagePage(bucket.file(u"tom.pages"_s), QuickLookLimits()));
    }
};

QTEST_GUILESS_MAIN(QuickLookEmbeddedTests)
#include "QuickLookEmbeddedTests.moc"
