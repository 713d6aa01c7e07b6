#include "Vault/FolderListing.h"

#include "Fakes/Bucket.h"

#include <QTest>

#include <algorithm>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace wendlore;
using namespace Qt::StringLiterals;

namespace {

std::vector<FolderListing::Entry> byName(const FolderListing& listing)
{
    std::vector<FolderListing::Entry> entries = listing.entries();
    std::ranges::sort(entries, {}, &FolderListing::Entry::name);
    return entries;
}

} // namespace

class FolderListingTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesComeInTheOrderOfTheirBytesWithoutHiddenOnes();
    void directoriesFilesAndAllElseAreToldApart();
    void aFolderThatTakesManyReadsIsListedWhole();
    void namesEndWithAZeroByte();
    void onlyALinkThatMayBeFollowedIsListed();
    void aFolderIsFoundFromOneAboveItToo();
    void whatCannotBeReadIsEmpty();
};

void FolderListingTests::namesComeInTheOrderOfTheirBytesWithoutHiddenOnes()
{
    const Bucket bucket({{"b", ""}, {"å", ""}, {"B/", ""}, {".dold", ""}, {"a b", ""}, {"a", ""}});

    QByteArrayList names;
    for (const FolderEntry& entry : visibleEntries(bucket.root(), FollowLink::No))
        names.append(entry.name);

    QCOMPARE(names, QByteArrayList({"B", "a", "a b", "b", "å"}));
}

void FolderListingTests::directoriesFilesAndAllElseAreToldApart()
{
    const Bucket bucket({{"1 fil", ""}, {"2 mapp/", ""}});
    QCOMPARE(::symlink("2 mapp", bucket.file(u"3 länk"_s).bytes().constData()), 0);
    QCOMPARE(::mkfifo(bucket.file(u"4 rör"_s).bytes().constData(), 0600), 0);
    const FolderListing listing(bucket.root(), FollowLink::No);
    const auto entries = byName(listing);

    QCOMPARE(entries.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i) {
        QCOMPARE(entries[i].isRegularFile, i == 0);
        QCOMPARE(entries[i].isDirectory, i == 1);
    }
    struct stat status;
    QCOMPARE(::stat(bucket.file(u"1 fil"_s).bytes().constData(), &status), 0);
    QCOMPARE(entries[0].inode, quint64(status.st_ino));
}

void FolderListingTests::aFolderThatTakesManyReadsIsListedWhole()
{
    constexpr int count = 2000;
    const Bucket bucket;
    const auto nameOf = [](int number) {
        return u"%1 "_s.arg(number, 4, 10, QChar(u'0')) + u"å"_s.repeated(100);
    };
    for (int number = 0; number < count; ++number)
        bucket.write(nameOf(number), "");
    const FolderListing listing(bucket.root(), FollowLink::No);
    const auto entries = byName(listing);

    QCOMPARE(entries.size(), std::size_t(count));
    for (int number = 0; number < count; ++number)
        QCOMPARE(QString::fromUtf8(entries[std::size_t(number)].name.data()), nameOf(number));
}

void FolderListingTests::namesEndWithAZeroByte()
{
    const Bucket bucket({{"a.md", ""}, {"b", ""}});
    const FolderListing listing(bucket.root(), FollowLink::No);

    QCOMPARE(listing.entries().size(), 2U);
    QVERIFY(std::ranges::all_of(listing.entries(), [](const FolderListing::Entry& entry) {
        return entry.name.data()[entry.name.size()] == '\0';
    }));
}

void FolderListingTests::onlyALinkThatMayBeFollowedIsListed()
{
    const Bucket bucket({{"mapp/A.md", ""}});
    const FileURL link = bucket.folder(u"länk"_s);
    QCOMPARE(::symlink("mapp", link.bytes().constData()), 0);

    QCOMPARE(FolderListing(link, FollowLink::No).entries().size(), 0U);
    QCOMPARE(FolderListing(link, FollowLink::Yes).entries().size(), 1U);
}

void FolderListingTests::aFolderIsFoundFromOneAboveItToo()
{
    const Bucket bucket({{"mapp/under/A.md", ""}});
    const QByteArray root = bucket.root().bytes();
    const FileURL folder = bucket.folder(u"mapp/under"_s);
    const int above = ::open(root.constData(), O_PATH | O_DIRECTORY);
    QVERIFY(above >= 0);
    // The way from the top to there is not taken any more.
    const QByteArray elsewhere = root + " flyttad";
    QCOMPARE(::rename(root.constData(), elsewhere.constData()), 0);

    const FolderListing listing({folder, FollowLink::No, above, std::size_t(root.size() + 1)});
    const std::size_t found = listing.entries().size();

    QCOMPARE(::rename(elsewhere.constData(), root.constData()), 0);
    ::close(above);
    QCOMPARE(found, 1U);
}

void FolderListingTests::whatCannotBeReadIsEmpty()
{
    const Bucket bucket({{"A.md", ""}});

    for (const FileURL& folder : {bucket.folder(u"borta"_s), bucket.file(u"A.md"_s), FileURL()}) {
        const FolderListing listing(folder, FollowLink::Yes);
        QVERIFY(listing.entries().empty());
        QCOMPARE(listing.descriptor(), -1);
    }
}

QTEST_APPLESS_MAIN(FolderListingTests)
#include "FolderListingTests.moc"
