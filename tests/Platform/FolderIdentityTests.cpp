#include "Platform/FolderIdentity.h"

#include "Fakes/Bucket.h"

#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace wendlore;

class FolderIdentityTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void staysTheSameWhenTheFolderMoves();
    void differsBetweenFolders();
    void timeOfBirthIsKnownWhereTheFileSystemKeepsIt();
    void linksAreFollowed();
    void onlyFoldersHaveOne();
};

void FolderIdentityTests::staysTheSameWhenTheFolderMoves()
{
    const Bucket place({{"Mapp/", ""}, {"Annan/", ""}});
    const auto before = folderIdentity(place.folder(u"Mapp"_s));

    QVERIFY(QDir().rename(place.folder(u"Mapp"_s).path(), place.folder(u"Annan/Ny"_s).path()));

    QVERIFY(before);
    QVERIFY(folderIdentity(place.folder(u"Annan/Ny"_s)) == before);
}

void FolderIdentityTests::differsBetweenFolders()
{
    const Bucket place({{"a/", ""}, {"b/", ""}});

    QVERIFY(folderIdentity(place.folder(u"a"_s)) != folderIdentity(place.folder(u"b"_s)));
}

void FolderIdentityTests::timeOfBirthIsKnownWhereTheFileSystemKeepsIt()
{
    const Bucket place;
    struct statx status;
    QCOMPARE(::statx(AT_FDCWD, place.root().bytes().constData(), 0, STATX_BTIME, &status), 0);
    const bool isKept = (status.stx_mask & STATX_BTIME) != 0;

    const qint64 born = folderIdentity(place.root())->born;

    QCOMPARE(born / 1'000'000'000, isKept ? qint64(status.stx_btime.tv_sec) : 0);
}

void FolderIdentityTests::linksAreFollowed()
{
    const Bucket place({{"Mapp/", ""}});
    QVERIFY(QFile::link(place.folder(u"Mapp"_s).path(), place.file(u"Länk"_s).path()));

    QVERIFY(folderIdentity(place.folder(u"Länk"_s)) == folderIdentity(place.folder(u"Mapp"_s)));
}

void FolderIdentityTests::onlyFoldersHaveOne()
{
    const Bucket place({{"A.md", ""}});

    QVERIFY(!folderIdentity(place.file(u"A.md"_s)));
    QVERIFY(!folderIdentity(place.folder(u"finns inte"_s)));
}

QTEST_GUILESS_MAIN(FolderIdentityTests)
#include "FolderIdentityTests.moc"
