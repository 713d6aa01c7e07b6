#include "Platform/PathBookmarks.h"

#include "Fakes/Bucket.h"
#include "Platform/FolderIdentity.h"
#include "Vault/FileSystemCalls.h"

#include <QCborMap>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

QByteArray bookmarkOf(const FileURL& folder)
{
    return PathBookmarks().create(folder).value();
}

std::optional<FileURL> resolved(const QByteArray& bookmark)
{
    return PathBookmarks().resolve(bookmark);
}

void move(const Bucket& place, const QString& from, const QString& to)
{
    QVERIFY(QDir().rename(place.folder(from).path(), place.folder(to).path()));
}

/// Deletes a folder and keeps its number taken: one that another program makes in the same moment could get
/// it, and pass for the folder.
[[nodiscard]] Descriptor deleted(const FileURL& folder)
{
    FileSystemCalls& calls = FileSystemCalls::real();
    const QByteArray bytes = folder.bytes();
    const char* const path = bytes.constData();
    Descriptor held(calls, calls.openAt(AT_FDCWD, path, O_PATH | O_DIRECTORY));
    if (!held.isOpen() || ::rmdir(path) != 0)
        qFatal("cannot delete %s", path);
    return held;
}

} // namespace

class PathBookmarksTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void folderIsFoundAtItsPlace();
    void renamedFolderIsFound();
    void folderMovedIntoItsNeighbourIsFound();
    void folderMovedUpIsFound();
    void folderMovedToAnotherBranchIsFound();
    void folderBelowARenamedOneIsFound();
    void folderMadeAnewAtItsPlaceIsFound();
    void folderAtThePlaceComesBeforeTheOldOneElsewhere();
    void deletedFolderIsNotFound();
    void folderOfTheSameNameElsewhereIsNotTaken();
    void laterFolderWithTheSameInodeIsNotTaken();
    void folderInAHiddenTrashIsNotFound();
    void fileInPlaceOfTheFolderIsNotTaken();
    void folderBehindALinkKeepsTheLinksPath();
    void nameThatIsNotUtf8IsFound();
    void longSearchIsGivenUp();
    void onlyFoldersGetABookmark();
    void whatIsNoBookmarkIsNotResolved_data();
    void whatIsNoBookmarkIsNotResolved();
};

void PathBookmarksTests::folderIsFoundAtItsPlace()
{
    const Bucket place({{"Anteckningar/A.md", ""}});
    const FileURL folder = place.folder(u"Anteckningar"_s);

    QCOMPARE(resolved(bookmarkOf(folder)), folder);
}

void PathBookmarksTests::renamedFolderIsFound()
{
    const Bucket place({{"Anteckningar/A.md", ""}, {"Annat/", ""}});
    const QByteArray bookmark = bookmarkOf(place.folder(u"Anteckningar"_s));

    move(place, u"Anteckningar"_s, u"Dagbok"_s);

    QCOMPARE(resolved(bookmark), place.folder(u"Dagbok"_s));
}

void PathBookmarksTests::folderMovedIntoItsNeighbourIsFound()
{
    const Bucket place({{"Anteckningar/A.md", ""}, {"Arkiv/2020/", ""}});
    const QByteArray bookmark = bookmarkOf(place.folder(u"Anteckningar"_s));

    move(place, u"Anteckningar"_s, u"Arkiv/2020/Gamla"_s);

    QCOMPARE(resolved(bookmark), place.folder(u"Arkiv/2020/Gamla"_s));
}

void PathBookmarksTests::folderMovedUpIsFound()
{
    const Bucket place({{"Dokument/Anteckningar/A.md", ""}});
    const QByteArray bookmark = bookmarkOf(place.folder(u"Dokument/Anteckningar"_s));

    move(place, u"Dokument/Anteckningar"_s, u"Anteckningar"_s);

    QCOMPARE(resolved(bookmark), place.folder(u"Anteckningar"_s));
}

void PathBookmarksTests::folderMovedToAnotherBranchIsFound()
{
    const Bucket place({{"a/b/Anteckningar/A.md", ""}, {"c/d/", ""}});
    const QByteArray bookmark = bookmarkOf(place.folder(u"a/b/Anteckningar"_s));

    move(place, u"a/b/Anteckningar"_s, u"c/d/Anteckningar"_s);

    QCOMPARE(resolved(bookmark), place.folder(u"c/d/Anteckningar"_s));
}

void PathBookmarksTests::folderBelowARenamedOneIsFound()
{
    const Bucket place({{"a/b/Anteckningar/A.md", ""}});
    const QByteArray bookmark = bookmarkOf(place.folder(u"a/b/Anteckningar"_s));

    move(place, u"a"_s, u"ny"_s);

    QCOMPARE(resolved(bookmark), place.folder(u"ny/b/Anteckningar"_s));
}

void PathBookmarksTests::folderMadeAnewAtItsPlaceIsFound()
{
    const Bucket place({{"Anteckningar/", ""}, {"Annat/", ""}});
    const FileURL folder = place.folder(u"Anteckningar"_s);
    const QByteArray bookmark = bookmarkOf(folder);

    QVERIFY(QDir().rmdir(folder.path()));
    place.write(u"Annat 2/"_s, {});
    place.write(u"Anteckningar/"_s, {});

    QCOMPARE(resolved(bookmark), folder);
}

void PathBookmarksTests::folderAtThePlaceComesBeforeTheOldOneElsewhere()
{
    const Bucket place({{"Anteckningar/", ""}});
    const QByteArray bookmark = bookmarkOf(place.folder(u"Anteckningar"_s));

    move(place, u"Anteckningar"_s, u"Gamla"_s);
    place.write(u"Anteckningar/"_s, {});

    QCOMPARE(resolved(bookmark), place.folder(u"Anteckningar"_s));
}

void PathBookmarksTests::deletedFolderIsNotFound()
{
    const Bucket place({{"Anteckningar/", ""}, {"Annat/", ""}});
    const QByteArray bookmark = bookmarkOf(place.folder(u"Anteckningar"_s));

    const Descriptor held = deleted(place.folder(u"Anteckningar"_s));

    QVERIFY(!resolved(bookmark));
}

void PathBookmarksTests::folderOfTheSameNameElsewhereIsNotTaken()
{
    const Bucket place({{"a/Anteckningar/", ""}, {"b/Anteckningar/", ""}});
    const QByteArray bookmark = bookmarkOf(place.folder(u"a/Anteckningar"_s));

    const Descriptor held = deleted(place.folder(u"a/Anteckningar"_s));

    QVERIFY(!resolved(bookmark));
}

void PathBookmarksTests::laterFolderWithTheSameInodeIsNotTaken()
{
    const Bucket place({{"Annat/", ""}});
    const FolderIdentity other = folderIdentity(place.folder(u"Annat"_s)).value();
    const auto lostFolder = [&](const FolderIdentity& identity) {
        return QCborMap{{u"path"_s, place.folder(u"Borta"_s).bytes()},
                        {u"device"_s, identity.device},
                        {u"inode"_s, identity.inode},
                        {u"born"_s, identity.born}}
            .toCborValue()
            .toCbor();
    };
    QCOMPARE(resolved(lostFolder(other)), place.folder(u"Annat"_s));

    QVERIFY(!resolved(lostFolder({other.device, other.inode, other.born - 1})));
    QVERIFY(!resolved(lostFolder({other.device + 1, other.inode, other.born})));
}

void PathBookmarksTests::folderInAHiddenTrashIsNotFound()
{
    const Bucket place({{"Anteckningar/A.md", ""}, {".Trash-1000/files/", ""}});
    const QByteArray bookmark = bookmarkOf(place.folder(u"Anteckningar"_s));

    move(place, u"Anteckningar"_s, u".Trash-1000/files/Anteckningar"_s);

    QVERIFY(!resolved(bookmark));
}

void PathBookmarksTests::fileInPlaceOfTheFolderIsNotTaken()
{
    const Bucket place({{"Anteckningar/", ""}});
    const QByteArray bookmark = bookmarkOf(place.folder(u"Anteckningar"_s));

    const Descriptor held = deleted(place.folder(u"Anteckningar"_s));
    place.write(u"Anteckningar"_s, "text");

    QVERIFY(!resolved(bookmark));
}

void PathBookmarksTests::folderBehindALinkKeepsTheLinksPath()
{
    const Bucket place({{"Äkta/A.md", ""}});
    QVERIFY(QFile::link(place.folder(u"Äkta"_s).path(), place.file(u"Länk"_s).path()));

    QCOMPARE(resolved(bookmarkOf(place.folder(u"Länk"_s))), place.folder(u"Länk"_s));
}

void PathBookmarksTests::nameThatIsNotUtf8IsFound()
{
    const Bucket place;
    const FileURL before = place.root().appendingBytes("\xe5r", true);
    const FileURL after = place.root().appendingBytes("\xf6vrigt", true);
    QCOMPARE(::mkdir(before.bytes().constData(), 0755), 0);
    const QByteArray bookmark = bookmarkOf(before);
    QCOMPARE(resolved(bookmark), before);

    QCOMPARE(::rename(before.bytes().constData(), after.bytes().constData()), 0);
    QCOMPARE(resolved(bookmark), after);

    QCOMPARE(::rmdir(after.bytes().constData()), 0);
}

void PathBookmarksTests::longSearchIsGivenUp()
{
    const Bucket place({{"Anteckningar/", ""}});
    const QByteArray bookmark = bookmarkOf(place.folder(u"Anteckningar"_s));
    for (int number = 0; number < PathBookmarks::searchLimit; ++number)
        QVERIFY(QDir().mkdir(place.folder(QString::number(number)).path()));

    move(place, u"Anteckningar"_s, u"zz"_s);
    QCOMPARE(resolved(bookmark), place.folder(u"zz"_s));

    place.write(u"zzz/"_s, {});
    move(place, u"zz"_s, u"zzz/Anteckningar"_s);
    QVERIFY(!resolved(bookmark));
}

void PathBookmarksTests::onlyFoldersGetABookmark()
{
    const Bucket place({{"A.md", "text"}});
    PathBookmarks bookmarks;

    QVERIFY(!bookmarks.create(place.file(u"A.md"_s)));
    QVERIFY(!bookmarks.create(place.folder(u"finns inte"_s)));
    QVERIFY(!bookmarks.create(FileURL()));
}

void PathBookmarksTests::whatIsNoBookmarkIsNotResolved_data()
{
    QTest::addColumn<QByteArray>("bookmark");

    const QByteArray valid = bookmarkOf(FileURL::directory(u"/"_s));
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("a path") << QByteArray("/tmp");
    QTest::newRow("broken off") << valid.first(valid.size() / 2);
    QTest::newRow("another map") << QCborMap{{u"a"_s, 1}}.toCborValue().toCbor();
    QTest::newRow("a path that is no path")
        << QCborMap{{u"path"_s, QByteArray("tmp")}}.toCborValue().toCbor();
    QTest::newRow("a path of another type") << QCborMap{{u"path"_s, 7}}.toCborValue().toCbor();
    QTest::newRow("lost folder without identity")
        << QCborMap{{u"path"_s, QByteArray("/finns/inte")}}.toCborValue().toCbor();
    QTest::newRow("nested without end") << QByteArray(100'000, '\x81');
    QTest::newRow("huge") << QByteArray(10'000'000, '\xff');
    QTest::newRow("a path with a NUL") << QCborMap{{u"path"_s, QByteArray("/\0x", 3)}}.toCborValue().toCbor();
}

void PathBookmarksTests::whatIsNoBookmarkIsNotResolved()
{
    QFETCH(const QByteArray, bookmark);

    QVERIFY(!resolved(bookmark));
}

QTEST_GUILESS_MAIN(PathBookmarksTests)
#include "PathBookmarksTests.moc"
