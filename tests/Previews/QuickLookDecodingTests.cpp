#include "Previews/QuickLookDecoding.h"

#include "Fakes/Bucket.h"
#include "Support/SampleFiles.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace wendlore;

class QuickLookDecodingTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPageComesWithItsPicturesAndItsFile()
    {
        const Bucket bucket{{"a.mp3", "x"}};
        bucket.write(u"a.epub"_s, bookOf(1, 1));

        const auto book = decodeFilePreview(bucket.file(u"a.epub"_s), QuickLookLimits());
        const auto sound = decodeFilePreview(bucket.file(u"a.mp3"_s), QuickLookLimits());

        QVERIFY(book && sound);
        QVERIFY(book->body.contains("<h1>Kapitel 1</h1>"));
        QVERIFY(book->resources.contains(u"OPS/omslag.png"_s) && !book->streamed);
        QCOMPARE(sound->streamed, bucket.file(u"a.mp3"_s));
    }

    void aDocumentGivesItsPictureAndItsPages()
    {
        const Bucket bucket;
        bucket.write(u"a.key"_s,
                     packed({{u"QuickLook/Preview.pdf"_s, "sidor"}, {u"preview.jpg"_s, "bild"}}, u"zip"_s));
        const FileURL document = bucket.file(u"a.key"_s);

        const auto picture = decodeDocumentPreview(document, QuickLookLimits());

        QVERIFY(picture);
        QCOMPARE(picture->resources.value(u"bild"_s).bytes, QByteArray("bild"));
        QCOMPARE(decodeDocumentPages(document, QuickLookLimits()), QByteArray("sidor"));
    }

    void aFileOfManyGigabytesIsRead()
    {
        const Bucket bucket{{"a.log", "en rad\n"}};
        bucket.write(u"a.tar"_s, tarOfMany(2));
        for (const auto& name : {u"a.log"_s, u"a.tar"_s})
            QVERIFY(QFile::resize(bucket.file(name).path(), 8'000'000'000)); // a hole, which takes no room

        const auto listing = decodeFilePreview(bucket.file(u"a.tar"_s), QuickLookLimits());
        const auto text = decodeFilePreview(bucket.file(u"a.log"_s), QuickLookLimits());

        QVERIFY(listing && listing->body.contains("mapp/anteckning 1.md"));
        QVERIFY(text && text->body.contains("<p class=\"notice\">Filen är 8,0 GB."));
    }

    void anArchiveWithoutTimeGivesNothing()
    {
        const Bucket bucket;
        bucket.write(u"a.tar"_s, tarOfMany(2));

        QVERIFY(decodeFilePreview(bucket.file(u"a.tar"_s), QuickLookLimits()));
        QVERIFY(!decodeFilePreview(bucket.file(u"a.tar"_s), QuickLookLimits(0ms)));
    }

    void thereIsNothingOfWhatIsNotThereOrNoLongerWanted()
    {
        const Bucket bucket{{"a.txt", "hej"}};
        const QuickLookLimits stopped;
        stopped.stop();

        QVERIFY(!decodeFilePreview(bucket.file(u"saknas.txt"_s), QuickLookLimits()));
        QVERIFY(!decodeFilePreview(bucket.file(u"a.txt"_s), stopped));
        QVERIFY(decodeDocumentPages(bucket.file(u"saknas.key"_s), QuickLookLimits()).isEmpty());
    }
};

QTEST_GUILESS_MAIN(QuickLookDecodingTests)
#include "QuickLookDecodingTests.moc"
