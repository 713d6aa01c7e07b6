#include "Previews/QuickLookOffice.h"

#include "Previews/QuickLookOfficeProcess.h"

#include "Fakes/Bucket.h"

#include <QProcess>
#include <QTest>

#include <csignal>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace wendlore;

namespace {

constexpr int patience = 60'000; // milliseconds
constexpr auto letter = R"({\rtf1 Hej {\b fet}})";

const QByteArray spreadsheetBeginning = R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0" office:version="1.3"
 office:mimetype="application/vnd.oasis.opendocument.spreadsheet"><office:body><office:spreadsheet>)";
const QByteArray spreadsheetEnd = "</office:spreadsheet></office:body></office:document>";

/// A text whose macro writes "makro.txt" into the home folder as soon as the text is opened.
constexpr auto documentWithMacro = R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0" xmlns:xlink="http://www.w3.org/1999/xlink"
 xmlns:script="urn:oasis:names:tc:opendocument:xmlns:script:1.0" xmlns:ooo="http://openoffice.org/2004/office"
 xmlns:dom="http://www.w3.org/2001/xml-events" office:version="1.3"
 office:mimetype="application/vnd.oasis.opendocument.text"><office:scripts>
<office:script script:language="ooo:Basic"><ooo:libraries><ooo:library-embedded ooo:name="Standard">
<ooo:module ooo:name="Modul"><ooo:source-code>Sub Skriv
n = FreeFile
Open Environ("HOME") &amp; "/makro.txt" For Output As #n
Close #n
End Sub
</ooo:source-code></ooo:module></ooo:library-embedded></ooo:libraries></office:script>
<office:event-listeners><script:event-listener script:language="ooo:script" script:event-name="dom:load"
 xlink:href="vnd.sun.star.script:Standard.Modul.Skriv?language=Basic&amp;location=document" xlink:type="simple"/>
</office:event-listeners></office:scripts>
<office:body><office:text><text:p>Text med makro</text:p></office:text></office:body></office:document>)";

/// Settings of the office program with which every macro runs.
constexpr auto macrosAllowed = R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry"><item
 oor:path="/org.openoffice.Office.Common/Security/Scripting"><prop oor:name="MacroSecurityLevel"
 oor:op="fuse"><value>0</value></prop></item></oor:items>)";

/// The office program as a user has it, with "arbete/a.fodt" of the bucket open, its home in "hem" and its
/// settings in "hem/profil".
class OpenedPlainly final
{
public:
    explicit OpenedPlainly(const Bucket& bucket)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_s, bucket.folder(u"hem"_s).path());
        m_process.setProcessEnvironment(environment);
        // It starts others, which have to end with it.
        m_process.setChildProcessModifier([] { ::setpgid(0, 0); });
        m_process.start(officeProgram(),
                        {u"-env:UserInstallation=file://"_s + bucket.folder(u"hem/profil"_s).path(),
                         u"--headless"_s, u"--norestore"_s, bucket.file(u"arbete/a.fodt"_s).path()});
        m_process.waitForStarted();
    }
    ~OpenedPlainly()
    {
        ::kill(-static_cast<pid_t>(m_process.processId()), SIGKILL);
        m_process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(OpenedPlainly)

private:
    QProcess m_process;
};

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

    void aLetterOfAnotherFormatThanItsNameSaysIsReadToo()
    {
        if (officeProgram().isEmpty())
            QSKIP("there is no office program here");
        const Bucket bucket{{"a.doc", letter}};

        const auto content = convertDocument(bucket.file(u"a.doc"_s), QuickLookLimits(),
                                             QuickLookCache(bucket.folder(u"cache"_s)));

        QVERIFY(std::holds_alternative<QuickLookPdf>(content));
    }

    void theMacroOfADocumentDoesNotRun()
    {
        if (officeProgram().isEmpty())
            QSKIP("there is no office program here");
        const Bucket bucket{{"arbete/a.fodt", documentWithMacro}};
        bucket.write(u"hem/profil/user/registrymodifications.xcu"_s, macrosAllowed);
        {
            const OpenedPlainly opened(bucket);
            QTRY_VERIFY2_WITH_TIMEOUT(bucket.exists(u"hem/makro.txt"_s),
                                      "the macro runs where nothing is against it", patience);
        }

        QVERIFY(runOfficeProgram(officeProgram(), bucket.folder(u"arbete"_s).path(),
                                 {bucket.file(u"arbete/a.fodt"_s).path()}, u"pdf"_s, QuickLookLimits(60s)));

        QVERIFY(bucket.read(u"arbete/a.pdf"_s).startsWith("%PDF"));
        QVERIFY(!bucket.exists(u"arbete/makro.txt"_s));
    }

    void theSheetsStandInTheirOrderWithSwedishNumbers()
    {
        if (officeProgram().isEmpty())
            QSKIP("there is no office program here");
        QStringList names;
        QByteArray tables;
        for (char name = 'L'; name >= 'A'; --name) { // not as their names are sorted
            names.append(QString(QLatin1Char(name)));
            tables += "<table:table table:name=\"" + QByteArray(1, name) +
                      "\"><table:table-row><table:table-cell office:value-type=\"float\" "
                      "office:value=\"12.5\"/></table:table-row></table:table>";
        }
        const Bucket bucket;
        bucket.write(u"a.ods"_s, spreadsheetBeginning + tables + spreadsheetEnd);

        const auto content = convertDocument(bucket.file(u"a.ods"_s), QuickLookLimits(),
                                             QuickLookCache(bucket.folder(u"cache"_s)));

        QVERIFY(std::holds_alternative<QuickLookPage>(content));
        const QString body = QString::fromUtf8(std::get<QuickLookPage>(content).body);
        QStringList titles;
        for (const QString& part : body.split(u"<h2>"_s).sliced(1))
            titles.append(part.section(u"</h2>"_s, 0, 0));
        QCOMPARE(titles, names);
        QCOMPARE(body.count(u"12,5"_s), names.size());
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
