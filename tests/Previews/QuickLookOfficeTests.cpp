#include "Previews/QuickLookOffice.h"

#include "Previews/QuickLookOfficeProcess.h"

#include "Fakes/Bucket.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace wendlore;

namespace {

constexpr auto letter = R"({\rtf1 Hej {\b fet}})";

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
        QVERIFY(runOfficeProgram(officeProgram(), bucket.root().path(), {bucket.file(u"a.csv"_s).path()},
                                 u"ods"_s, QuickLookLimits(60s)));

        const auto content = convertDocument(bucket.file(u"a.ods"_s), QuickLookLimits(),
                                             QuickLookCache(bucket.folder(u"cache"_s)));

        QVERIFY(std::holds_alternative<QuickLookPage>(content));
        const QByteArray body = std::get<QuickLookPage>(content).body;
        QVERIFY2(body.contains("<th>Namn</th>") && body.contains("Äpplen"), body.constData());
    }

    /// One that is started by another program, as on some systems: it takes itself for new and starts twice.
    void anOfficeProgramThatTellsNoReleaseConvertsToo()
    {
        if (officeProgram().isEmpty())
            QSKIP("there is no office program here");
        const Bucket bucket{{"a.rtf", letter}};
        bucket.write(u"program"_s, "#!/bin/sh\nexec " + officeProgram().toLocal8Bit() + " \"$@\"\n");
        QVERIFY(QFile::setPermissions(bucket.file(u"program"_s).path(), QFile::ReadOwner | QFile::ExeOwner));

        QVERIFY(runOfficeProgram(bucket.file(u"program"_s).path(), bucket.root().path(),
                                 {bucket.file(u"a.rtf"_s).path()}, u"pdf"_s, QuickLookLimits(60s)));

        QVERIFY(bucket.read(u"a.pdf"_s).startsWith("%PDF"));
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
