#include "Previews/QuickLookOffice.h"

#include "Previews/QuickLookOfficeProcess.h"

#include "Fakes/Bucket.h"
#include "Support/DamagedFiles.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace wendlore;

namespace {

constexpr auto letter = R"({\rtf1 Hej {\b fet}})";
constexpr auto slide = R"(<?xml version="1.0"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:draw="urn:oasis:names:tc:opendocument:xmlns:drawing:1.0"
 xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0" office:version="1.3"
 office:mimetype="application/vnd.oasis.opendocument.presentation"><office:body><office:presentation>
<draw:page><draw:frame><draw:text-box><text:p>Budget</text:p></draw:text-box></draw:frame></draw:page>
</office:presentation></office:body></office:document>)";

} // namespace

class QuickLookOfficeTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void documentsAreKnownByTheirExtension_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("isDocument");
        for (const char* name : {"a.docx", "a.DOC", "a.rtf", "a.odt", "a.xlsx", "a.ods", "a.pptx", "a.odp",
                                 "a.key", "a.pages", "a.numbers", "a.rtfd"})
            QTest::newRow(name) << QString::fromLatin1(name) << true;
        for (const char* name : {"a.zip", "a.csv", "docx", "a.txt"})
            QTest::newRow(name) << QString::fromLatin1(name) << false;
    }

    void documentsAreKnownByTheirExtension()
    {
        QFETCH(const QString, name);
        QFETCH(const bool, isDocument);

        QCOMPARE(isOfficeDocument(FileURL::file(u"/b/"_s + name)), isDocument);
    }

    void aLetterIsConvertedOnceAndThenComesFromTheCache()
    {
        if (officeProgram().isEmpty())
            QSKIP("there is no office program here");
        const Bucket bucket{{"a.rtf", letter}};
        const QuickLookCache cache(bucket.folder(u"cache"_s));

        const auto first = convertDocument(bucket.file(u"a.rtf"_s), QuickLookLimits(), cache);

        QVERIFY(std::holds_alternative<QuickLookPdf>(first));
        const FileURL pages = std::get<QuickLookPdf>(first).file;
        QVERIFY(bucket.read(u"cache/"_s + pages.lastPathComponent()).startsWith("%PDF"));
        QCOMPARE(bucket.names(), (QStringList{u"a.rtf"_s, u"cache"_s}));
        const auto second = keptDocument(bucket.file(u"a.rtf"_s), cache);
        QVERIFY(second);
        QCOMPARE(std::get<QuickLookPdf>(*second).file, pages);
    }

    void aSpreadsheetBecomesATableForEachSheet()
    {
        if (officeProgram().isEmpty())
            QSKIP("there is no office program here");
        const Bucket bucket{{"a.csv", "Namn,Antal\n\xC4pplen,3\n"}};
        QVERIFY(runOfficeProgram(officeProgram(), bucket.root().path(), bucket.file(u"a.csv"_s).path(),
                                 u"ods"_s, QuickLookLimits(60s)));

        const auto content = convertDocument(bucket.file(u"a.ods"_s), QuickLookLimits(),
                                             QuickLookCache(bucket.folder(u"cache"_s)));

        QVERIFY(std::holds_alternative<QuickLookPage>(content));
        const QByteArray body = std::get<QuickLookPage>(content).body;
        QVERIFY2(body.contains("<th>Namn</th>") && body.contains("Äpplen"), body.constData());
    }

    void damagedDocumentsDoNoHarm_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<QString>("format");
        QTest::newRow("text") << u"a.rtf"_s << QByteArray(letter) << u"docx"_s;
        if (!qEnvironmentVariableIsSet("LONG"))
            return;
        QTest::newRow("sheet") << u"a.csv"_s << QByteArray("Namn,Antal\nPorto,3\n") << u"xlsx"_s;
        QTest::newRow("slides") << u"a.fodp"_s << QByteArray(slide) << u"pptx"_s;
    }

    void damagedDocumentsDoNoHarm()
    {
        if (officeProgram().isEmpty())
            QSKIP("there is no office program here");
        QFETCH(const QString, source);
        QFETCH(const QByteArray, contents);
        QFETCH(const QString, format);
        const Bucket bucket;
        bucket.write(source, contents);
        QVERIFY(runOfficeProgram(officeProgram(), bucket.root().path(), bucket.file(source).path(), format,
                                 QuickLookLimits(60s)));
        const QString name = u"a."_s + format;
        const QByteArray whole = bucket.read(name);
        QVERIFY(!whole.isEmpty());
        const QStringList names = bucket.names() + QStringList{u"cache"_s};
        QRandomGenerator random(11);
        for (int left = qEnvironmentVariableIsSet("LONG") ? 100 : 1; left > 0; --left) {
            bucket.write(name, damagedCopy(whole, random));
            QElapsedTimer time;
            time.start();
            static_cast<void>(convertDocument(bucket.file(name), QuickLookLimits(),
                                              QuickLookCache(bucket.folder(u"cache"_s))));
            QVERIFY2(time.elapsed() < 90'000, "a conversion ends after a minute");
            for (const QString& there : bucket.names())
                QVERIFY2(names.contains(there), qPrintable(there));
        }
    }

    void whatCannotBeConvertedIsACardThatSaysSo()
    {
        const Bucket bucket{{"a.docx", ""}};
        const QuickLookLimits stopped;
        stopped.stop();

        const auto content =
            convertDocument(bucket.file(u"a.docx"_s), stopped, QuickLookCache(bucket.folder(u"cache"_s)));

        QVERIFY(std::holds_alternative<QuickLookCard>(content));
        QVERIFY(!bucket.exists(u"cache"_s));
    }

    void withoutAnOfficeProgramTheCardSaysSo()
    {
        const Bucket bucket{{"a.docx", "x"}};
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", bucket.root().bytes());

        const auto content = convertDocument(bucket.file(u"a.docx"_s), QuickLookLimits(),
                                             QuickLookCache(bucket.folder(u"cache"_s)));

        qputenv("PATH", path);
        QCOMPARE(std::get<QuickLookCard>(content).message,
                 u"Installera LibreOffice för att se dokumentet här."_s);
    }
};

QTEST_GUILESS_MAIN(QuickLookOfficeTests)
#include "QuickLookOfficeTests.moc"
