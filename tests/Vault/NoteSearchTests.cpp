#include "Vault/NoteSearch.h"

#include "Fakes/Bucket.h"
#include "Fakes/ChildProcess.h"
#include "Vault/Collation.h"
#include "Vault/FileTree.h"

#include <QTest>

#include <atomic>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace wendlore;
using namespace Qt::StringLiterals;

namespace {

std::vector<SearchHit> search(const Bucket& bucket, const QString& query)
{
    return searchNotes(bucket.root(), query, NameOrder("sv_SE"), FoldingRule::standard);
}

/// The hits' names, in order.
QStringList names(const std::vector<SearchHit>& hits)
{
    QStringList names;
    for (const SearchHit& hit : hits)
        names.append(hit.url().lastPathComponent());
    return names;
}

} // namespace

class NoteSearchTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsNamesAndTextsWhateverTheCase();
    void aNoteThatMatchesByNameOnlyHasNoSnippet();
    void theSnippetIsTheFirstMatchingLineWithoutItsIndentation();
    void theSnippetOfALongLineIsItsFirst120Characters();
    void hitsAreOrderedAsAFileBrowserOrdersNames();
    void notesOfOneNameInTwoFoldersKeepTheListsOrder();
    void swedishLettersComeLast();
    void onlyNotesAreSearched();
    void hiddenFilesAndFoldersAreNotSearched();
    void textThatIsNotUtf8CountsAsEmpty_data();
    void textThatIsNotUtf8CountsAsEmpty();
    void namesThatAreNotUtf8AreKept();
    void emptyAndHugeNotesAreSearched();
    void sizesAroundTheBuffersEndAreReadWhole_data();
    void sizesAroundTheBuffersEndAreReadWhole();
    void linksToNotesAreReadAndLinksToFoldersAreNotFollowed();
    void whatCannotBeReadIsPassedOver();
    void aPipeNeverHoldsUpASearch();
    void notesThatVanishMeanwhileDoNoHarm();
    void everyNoteOfALargeBucketIsFound();
};

void NoteSearchTests::findsNamesAndTextsWhateverTheCase()
{
    const Bucket bucket({{"Möte.md", "inget"}, {"B.md", "ett MÖTE"}, {"C.md", "mote"}, {"D.txt", "möte"}});

    QCOMPARE(names(search(bucket, u"möte"_s)), QStringList({u"B.md"_s, u"D.txt"_s, u"Möte.md"_s}));
}

void NoteSearchTests::aNoteThatMatchesByNameOnlyHasNoSnippet()
{
    const Bucket bucket({{"Möte.md", "inget här"}, {"Mötet.md", "om mötet"}});

    const auto hits = search(bucket, u"möte"_s);

    QCOMPARE(hits.size(), 2U);
    QCOMPARE(hits[0].snippet(), QByteArray());
    QCOMPARE(hits[1].snippet(), "om mötet");
}

void NoteSearchTests::theSnippetIsTheFirstMatchingLineWithoutItsIndentation()
{
    const Bucket bucket({{"A.md", "# Lista\n\t  - [ ] Ring Anna \t\n- [ ] Anna igen\n"}});

    QCOMPARE(search(bucket, u"anna"_s)[0].snippet(), "- [ ] Ring Anna");
}

void NoteSearchTests::theSnippetOfALongLineIsItsFirst120Characters()
{
    const QString line = u"å"_s.repeated(200) + u" anna "_s + u"x"_s.repeated(94);
    const Bucket bucket;
    bucket.write(u"A.md"_s, line.toUtf8());

    QCOMPARE(search(bucket, u"anna"_s)[0].snippet(), QByteArray("å").repeated(120));
}

void NoteSearchTests::hitsAreOrderedAsAFileBrowserOrdersNames()
{
    const Bucket bucket({{"Not 10.md", "x"}, {"Not 2.md", "x"}, {"anteckning.md", "x"}, {"Not 02.md", "x"}});

    QCOMPARE(names(search(bucket, u"x"_s)),
             QStringList({u"anteckning.md"_s, u"Not 02.md"_s, u"Not 2.md"_s, u"Not 10.md"_s}));
}

void NoteSearchTests::notesOfOneNameInTwoFoldersKeepTheListsOrder()
{
    const Bucket bucket({{"b/Plan.md", "x"}, {"a/Plan.md", "x"}, {"a b/Plan.md", "x"}, {"PLAN.md", "x"}});

    const auto hits = search(bucket, u"x"_s);

    std::vector<FileURL> found;
    for (const SearchHit& hit : hits)
        found.push_back(hit.url());
    QCOMPARE(found, allMarkdownFiles(bucket.root()));
}

void NoteSearchTests::swedishLettersComeLast()
{
    const Bucket bucket({{"Ö.md", "x"}, {"Å.md", "x"}, {"Z.md", "x"}, {"Ä.md", "x"}, {"A.md", "x"}});

    QCOMPARE(names(search(bucket, u"x"_s)),
             QStringList({u"A.md"_s, u"Z.md"_s, u"Å.md"_s, u"Ä.md"_s, u"Ö.md"_s}));
}

void NoteSearchTests::onlyNotesAreSearched()
{
    const Bucket bucket(
        {{"a.md", "x"}, {"b.markdown", "x"}, {"c.MD", "x"}, {"d.b.md", "x"}, {"e.html", "x"}});

    QCOMPARE(names(search(bucket, u"x"_s)), QStringList({u"a.md"_s, u"c.MD"_s, u"d.b.md"_s}));
}

void NoteSearchTests::hiddenFilesAndFoldersAreNotSearched()
{
    const Bucket bucket({{".dold.md", "x"}, {".git/a.md", "x"}, {"a/.b/c.md", "x"}, {"a/d.md", "x"}});

    QCOMPARE(names(search(bucket, u"x"_s)), QStringList({u"d.md"_s}));
}

void NoteSearchTests::textThatIsNotUtf8CountsAsEmpty_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("invalid byte") << QByteArray("anna \xFF");
    QTest::newRow("invalid byte before") << QByteArray("\xFF\nanna");
    QTest::newRow("overlong") << QByteArray("anna \xC0\xAF");
    QTest::newRow("surrogate") << QByteArray("anna \xED\xA0\x80");
    QTest::newRow("cut off") << QByteArray("anna \xC3");
    QTest::newRow("beyond Unicode") << QByteArray("anna \xF4\x90\x80\x80");
    QTest::newRow("UTF-16") << QByteArray("\xFF\xFE"
                                          "a\0n\0n\0a\0",
                                          10);
}

void NoteSearchTests::textThatIsNotUtf8CountsAsEmpty()
{
    QFETCH(QByteArray, text);
    const Bucket bucket({{"Anna.md", ""}});
    bucket.write(u"A.md"_s, text);
    bucket.write(u"Annas.md"_s, text);

    const auto hits = search(bucket, u"anna"_s);

    QCOMPARE(names(hits), QStringList({u"Anna.md"_s, u"Annas.md"_s}));
    QCOMPARE(hits[1].snippet(), QByteArray());
}

void NoteSearchTests::namesThatAreNotUtf8AreKept()
{
    const Bucket bucket;
    const FileURL odd = bucket.root().appendingBytes("\xFF.md", false);
    QVERIFY(::close(::creat(odd.bytes().constData(), 0600)) == 0);
    const int descriptor = ::open(odd.bytes().constData(), O_WRONLY);
    QCOMPARE(::write(descriptor, "anna", 4), 4);
    ::close(descriptor);

    const auto hits = search(bucket, u"anna"_s);

    QCOMPARE(hits.size(), 1U);
    QCOMPARE(hits[0].url(), odd);
    QCOMPARE(hits[0].snippet(), "anna");
}

void NoteSearchTests::emptyAndHugeNotesAreSearched()
{
    const Bucket bucket({{"Tom.md", ""}});
    QByteArray line(52 * 1000 * 1000, 'x');
    line += " anna";
    bucket.write(u"Stor.md"_s, line);

    const auto hits = search(bucket, u"anna"_s);

    QCOMPARE(names(hits), QStringList({u"Stor.md"_s}));
    QCOMPARE(hits[0].snippet(), QByteArray("x").repeated(120));
}

void NoteSearchTests::sizesAroundTheBuffersEndAreReadWhole_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {31, 32, 33, 256 * 1024 - 1, 256 * 1024, 256 * 1024 + 1, 512 * 1024 + 1})
        QTest::addRow("%d bytes", size) << size;
}

void NoteSearchTests::sizesAroundTheBuffersEndAreReadWhole()
{
    QFETCH(int, size);
    const Bucket bucket;
    bucket.write(u"A.md"_s, QByteArray(size - 5, '\n') + "anna!");

    QCOMPARE(search(bucket, u"anna!"_s).size(), 1U);
    QCOMPARE(search(bucket, u"anna!x"_s).size(), 0U);
}

void NoteSearchTests::linksToNotesAreReadAndLinksToFoldersAreNotFollowed()
{
    const Bucket outside({{"A.md", "anna"}, {"mapp/B.md", "anna"}});
    const Bucket bucket({{"tom/", ""}});
    const auto link = [&](const FileURL& target, const QString& name) {
        QVERIFY(QFile::link(target.path(), bucket.file(name).path()));
    };
    link(outside.file(u"A.md"_s), u"Länk.md"_s);
    link(outside.folder(u"mapp"_s), u"mapp"_s);
    link(bucket.root(), u"runt"_s);
    link(outside.file(u"borta.md"_s), u"anna borta.md"_s);

    QCOMPARE(names(search(bucket, u"anna"_s)), QStringList({u"anna borta.md"_s, u"Länk.md"_s}));
}

void NoteSearchTests::whatCannotBeReadIsPassedOver()
{
    const Bucket bucket({{"låst/A.md", "anna"}, {"B.md", "anna"}, {"C.md", "anna"}});
    ::chmod(bucket.folder(u"låst"_s).bytes().constData(), 0);
    ::chmod(bucket.file(u"B.md"_s).bytes().constData(), 0);
    ::chmod(bucket.root().bytes().constData(), 0755);

    const ChildResult searched = ChildProcess::run([&] {
        if (isSuperuser())
            becomeOrdinaryUser();
        return names(search(bucket, u"anna"_s)).join(u'|').toUtf8();
    });

    ::chmod(bucket.folder(u"låst"_s).bytes().constData(), 0700);
    QVERIFY(searched.hasExited);
    QCOMPARE(searched.said, QByteArray("C.md"));
}

void NoteSearchTests::aPipeNeverHoldsUpASearch()
{
    const Bucket bucket({{"A.md", "anna"}});
    QCOMPARE(::mkfifo(bucket.file(u"anna.md"_s).bytes().constData(), 0600), 0);

    const auto hits = search(bucket, u"anna"_s);

    QCOMPARE(names(hits), QStringList({u"A.md"_s, u"anna.md"_s}));
    QCOMPARE(hits[1].snippet(), QByteArray());
}

void NoteSearchTests::notesThatVanishMeanwhileDoNoHarm()
{
    const Bucket bucket;
    for (int i = 0; i < 200; ++i)
        bucket.write(u"m%1/%2.md"_s.arg(i % 10).arg(i), "anna");
    std::atomic<bool> isDone = false;
    std::thread other([&] {
        for (int i = 0; !isDone; i = (i + 1) % 200) {
            const QByteArray path = bucket.file(u"m%1/%2.md"_s.arg(i % 10).arg(i)).bytes();
            ::unlink(path.constData());
            bucket.write(u"m%1/%2.md"_s.arg(i % 10).arg(i), QByteArray(i * 100, 'x') + " anna");
        }
    });

    for (int round = 0; round < 30; ++round)
        QVERIFY(search(bucket, u"anna"_s).size() <= 200U);

    isDone = true;
    other.join();
    QCOMPARE(search(bucket, u"anna"_s).size(), 200U);
}

void NoteSearchTests::everyNoteOfALargeBucketIsFound()
{
    const Bucket bucket;
    for (int i = 0; i < 2000; ++i)
        bucket.write(u"m%1/n%2/%3.md"_s.arg(i % 7).arg(i % 31).arg(i), i % 2 == 0 ? "anna" : "björn");

    const auto hits = search(bucket, u"anna"_s);

    QCOMPARE(hits.size(), 1000U);
    for (std::size_t i = 0; i < hits.size(); ++i)
        QCOMPARE(hits[i].url().nameWithoutExtension(), QString::number(2 * i));
}

QTEST_GUILESS_MAIN(NoteSearchTests)
#include "NoteSearchTests.moc"
