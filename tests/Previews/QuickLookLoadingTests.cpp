#include "Previews/QuickLookLoading.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Support/SampleFiles.h"

#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

QuickLookContent load(const FileURL& file, const QuickLookLimits& limits = QuickLookLimits())
{
    FakeServices services;
    return loadQuickLook(services.coordinator, file, limits);
}

QByteArray bodyOf(const QuickLookContent& content)
{
    const auto* page = std::get_if<QuickLookPage>(&content);
    return page ? page->body : QByteArray();
}

} // namespace

class QuickLookLoadingTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Before any process is started that reads files.
    void initTestCase() { qputenv("TZ", "JST-9"); }

    void aFileIsShownByWhatItIs_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("markup");
        QTest::newRow("source") << u"a.cpp"_s << QByteArray("int a;") << QByteArray("<i class=k>int</i>");
        QTest::newRow("table") << u"a.CSV"_s << QByteArray("a,b\n1,2\n") << QByteArray("<th>b</th>");
        QTest::newRow("text without extension") << u"LICENS"_s << QByteArray("fritt") << QByteArray("fritt");
        QTest::newRow("text of an unknown kind") << u"a.xyz"_s << QByteArray("text") << QByteArray("text");
        QTest::newRow("mail") << u"a.eml"_s << QByteArray("Subject: Hej\n\nx") << QByteArray("<h1>Hej</h1>");
        QTest::newRow("text that is called a mail")
            << u"a.eml"_s << QByteArray("bara text") << QByteArray("bara text");
        QTest::newRow("text that is called an archive")
            << u"a.zip"_s << QByteArray("text") << QByteArray("text");
        QTest::newRow("half a drawing")
            << u"a.svg"_s << QByteArray("<svg><path>") << QByteArray("&lt;svg&gt;");
        QTest::newRow("sound") << u"a.mp3"_s << QByteArray("x") << QByteArray("<audio");
    }

    void aFileIsShownByWhatItIs()
    {
        QFETCH(const QString, name);
        QFETCH(const QByteArray, bytes);
        QFETCH(const QByteArray, markup);
        const Bucket bucket;
        bucket.write(name, bytes);

        QVERIFY2(bodyOf(load(bucket.file(name))).contains(markup),
                 bodyOf(load(bucket.file(name))).constData());
    }

    void whatCannotBeShownIsACard_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("bytes") << u"a.bin"_s;
        QTest::newRow("nothing") << u"tom.txt2"_s;
        QTest::newRow("missing") << u"saknas"_s;
        QTest::newRow("pipe") << u"pipa"_s;
        QTest::newRow("no archive") << u"a.zip"_s;
        QTest::newRow("no book") << u"a.epub"_s;
        QTest::newRow("no font") << u"a.ttf"_s;
        QTest::newRow("document that only office programs can show") << u"a.rtf"_s;
        QTest::newRow("empty package") << u"a.pages"_s;
    }

    void whatCannotBeShownIsACard()
    {
        QFETCH(const QString, name);
        const Bucket bucket{{"tom.txt2", ""}, {"a.rtf", "{\\rtf1 a}"}, {"a.pages/", ""}};
        for (const char* binary : {"a.bin", "a.zip", "a.epub", "a.ttf"})
            bucket.write(QString::fromLatin1(binary), QByteArray("\0\1\2\3", 4));
        QCOMPARE(::mkfifo(bucket.file(u"pipa"_s).bytes().constData(), 0600), 0);

        QVERIFY(std::holds_alternative<QuickLookCard>(load(bucket.file(name))));
    }

    void theEngineReadsTheFileItselfThatItPlays()
    {
        const Bucket bucket{{"a.mp3", "x"}, {"a.cpp", "int a;"}};

        const auto sound = load(bucket.file(u"a.mp3"_s));
        const auto text = load(bucket.file(u"a.cpp"_s));

        QCOMPARE(std::get<QuickLookPage>(sound).streamed, bucket.file(u"a.mp3"_s));
        QVERIFY(!std::get<QuickLookPage>(text).streamed);
    }

    void timesAreThoseOfThisPlace()
    {
        const Bucket bucket{{"a.eml", "Subject: Hej\nDate: Fri, 17 May 2024 12:00:00 +0000\n\nx"}};

        const QByteArray body = bodyOf(load(bucket.file(u"a.eml"_s)));

        QVERIFY2(body.contains("17 maj 2024 21:00"), body.constData());
    }

    void thePagesThatADocumentBringsAlongAreKept()
    {
        const Bucket bucket;
        const QuickLookCache cache(bucket.folder(u"cache"_s));
        const QByteArray document = packed({{u"QuickLook/Preview.pdf"_s, "sidor"}}, u"zip"_s);
        for (const auto& name : {u"a.key"_s, u"a.docx"_s})
            bucket.write(name, document);
        bucket.write(u"tom.key"_s, "inget");

        const auto pages = embeddedPages(bucket.file(u"a.key"_s), QuickLookLimits(), cache);

        QVERIFY(pages);
        QCOMPARE(bucket.read(u"cache/"_s + pages->file.lastPathComponent()), QByteArray("sidor"));
        QVERIFY(!embeddedPages(bucket.file(u"a.docx"_s), QuickLookLimits(), cache));
        QVERIFY(!embeddedPages(bucket.file(u"tom.key"_s), QuickLookLimits(), cache));
        const QuickLookLimits stopped;
        stopped.stop();
        QVERIFY2(embeddedPages(bucket.file(u"a.key"_s), stopped, cache), "they are kept");
    }

    void aPackageIsShownByItsPagesItsPictureOrItsFiles()
    {
        const Bucket bucket{{"a.pages/preview.jpg", "bild"},
                            {"b.rtfd/TXT.rtf", "text"},
                            {"c.key/QuickLook/Preview.pdf", "sidor"},
                            {"c.key/preview.jpg", "bild"}};

        QVERIFY(bodyOf(load(bucket.file(u"a.pages"_s))).contains("<img src=\"r/bild\""));
        QVERIFY(bodyOf(load(bucket.file(u"b.rtfd"_s))).contains("<td>TXT.rtf</td>"));
        const auto pages = load(bucket.file(u"c.key"_s));
        QVERIFY(std::holds_alternative<QuickLookPdf>(pages));
        QCOMPARE(std::get<QuickLookPdf>(pages).file, bucket.file(u"c.key/QuickLook/Preview.pdf"_s));
    }

    void whatIsNoLongerWantedIsNotRead()
    {
        const Bucket bucket{{"a.cpp", "int a;"}};
        const QuickLookLimits limits;
        limits.stop();

        QVERIFY(std::holds_alternative<QuickLookCard>(load(bucket.file(u"a.cpp"_s), limits)));
    }

    void aFileThatIsBeingWrittenIsWaitedFor()
    {
        const Bucket bucket{{"a.cpp", "int"}};
        FakeServices services;
        services.coordinator.afterNextRead = [&bucket] { bucket.write(u"a.cpp"_s, "float"); };

        const auto content = loadQuickLook(services.coordinator, bucket.file(u"a.cpp"_s), QuickLookLimits());

        QVERIFY(bodyOf(content).contains("float"));
    }

    void waitingForAFileIsNoPartOfItsTime()
    {
        const Bucket bucket{{"a.cpp", "int a;"}};
        QVERIFY(bodyOf(load(bucket.file(u"a.cpp"_s), QuickLookLimits(std::chrono::milliseconds(0))))
                    .contains("int"));
    }

    void aFileOfACloudProgramIsAskedForFirst()
    {
        const Bucket bucket{{"a.cpp", "int a;"}};
        FakeServices services;

        static_cast<void>(loadQuickLook(services.coordinator, bucket.file(u"a.cpp"_s), QuickLookLimits()));

        QCOMPARE(services.coordinator.downloads, QList{bucket.file(u"a.cpp"_s)});
    }
};

QTEST_GUILESS_MAIN(QuickLookLoadingTests)
#include "QuickLookLoadingTests.moc"
