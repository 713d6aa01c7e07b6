#include "Vault/EntryURLs.h"

#include <QTest>

#include <thread>
#include <vector>

using namespace wendlore;
using namespace Qt::StringLiterals;

class EntryURLsTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void entriesEqualLocationsOfTheirOwn_data();
    void entriesEqualLocationsOfTheirOwn();
    void entriesOfOneNameAndOfSeveralDiffer();
    void moreNamesThanWereAnnouncedAreKeptToo();
    void entriesOutliveTheRest();
    void severalThreadsMayLetGoOfThemAtOnce();
};

void EntryURLsTests::entriesEqualLocationsOfTheirOwn_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("path");

    QTest::newRow("in a folder") << u"/b/Möten"_s << u"/b/Möten/Plan.md"_s;
    QTest::newRow("in the root") << u"/"_s << u"/Plan.md"_s;
}

void EntryURLsTests::entriesEqualLocationsOfTheirOwn()
{
    QFETCH(const QString, folder);
    QFETCH(const QString, path);
    EntryURLs urls(FileURL::directory(folder), 8);

    const FileURL entry = urls.add("Plan.md", false);

    QCOMPARE(entry, FileURL::file(path));
    QCOMPARE(qHash(entry), qHash(FileURL::file(path)));
    QCOMPARE(entry.path(), path);
    QCOMPARE(entry.deletingLastPathComponent(), FileURL::directory(folder));
    QVERIFY(entry.isBelow(FileURL::directory(folder)));
    QVERIFY(entry != FileURL::directory(path));
}

void EntryURLsTests::entriesOfOneNameAndOfSeveralDiffer()
{
    EntryURLs urls(FileURL::directory(u"/b"_s), 6);
    const FileURL first = urls.add("a", false);
    const FileURL second = urls.add("ab", true);
    const FileURL third = urls.add("a", false);
    const FileURL folder = urls.add("a", true);

    QVERIFY(first != second);
    QVERIFY(!first.hasPathOf(second));
    QCOMPARE(first, third);
    QVERIFY(first != folder && first.hasPathOf(folder));
    QCOMPARE(second.path(), u"/b/ab"_s);
}

void EntryURLsTests::moreNamesThanWereAnnouncedAreKeptToo()
{
    EntryURLs urls(FileURL::directory(u"/b"_s), 4);
    const FileURL first = urls.add("a.md", false, {});

    const FileURL second = urls.add("b.md", false, {});

    QCOMPARE(first.path(), u"/b/a.md"_s);
    QCOMPARE(second.path(), u"/b/b.md"_s);
}

void EntryURLsTests::entriesOutliveTheRest()
{
    FileURL kept;
    {
        EntryURLs urls(FileURL::directory(u"/b/Möten"_s), 12);
        const FileURL other = urls.add("A.md", false);
        kept = urls.add("B.md", false);
    }

    QCOMPARE(kept.path(), u"/b/Möten/B.md"_s);
}

void EntryURLsTests::severalThreadsMayLetGoOfThemAtOnce()
{
    constexpr int count = 2000;
    EntryURLs urls(FileURL::directory(u"/b"_s), 5 * count);
    std::vector<FileURL> mine;
    for (int number = 0; number < count; ++number)
        mine.push_back(urls.add(std::to_string(number), false));

    std::vector<FileURL> theirs = mine;
    std::jthread other([notes = std::move(theirs)]() mutable {
        std::vector<FileURL> copies = notes;
        notes.clear();
    });
    const FileURL last = mine.back();
    mine.clear();
    other.join();

    QCOMPARE(last.path(), u"/b/1999"_s);
}

QTEST_APPLESS_MAIN(EntryURLsTests)
#include "EntryURLsTests.moc"
