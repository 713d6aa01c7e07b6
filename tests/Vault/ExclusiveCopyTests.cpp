#include "Vault/ExclusiveCopy.h"

#include "Fakes/Bucket.h"
#include "Fakes/FaultyCalls.h"

#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace wendlore;
using namespace Qt::StringLiterals;

class ExclusiveCopyTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFileIsCopiedWithItsTimeAndMode();
    void aFolderIsCopiedWithAllBelow();
    void whatExistsIsNeverReplaced();
    void whatAppearsDuringTheCopyIsNeverReplaced();
    void aCopyThatFailsLeavesNothing_data();
    void aCopyThatFailsLeavesNothing();
    void whatIsNoFileOrFolderIsNotCopied();
};

void ExclusiveCopyTests::aFileIsCopiedWithItsTimeAndMode()
{
    const Bucket bucket({{"bild.png", "bytes"}});
    const timespec times[] = {{1'000'000, 0}, {2'000'000, 5}};
    const QByteArray path = bucket.file(u"bild.png"_s).bytes();
    QCOMPARE(::utimensat(-1, path.constData(), times, 0), 0);
    QCOMPARE(::chmod(path.constData(), 0640), 0);

    QCOMPARE(copyExclusively(bucket.file(u"bild.png"_s), bucket.file(u"kopia.png"_s)), 0);

    QCOMPARE(bucket.names(), QStringList({u"bild.png"_s, u"kopia.png"_s}));
    QCOMPARE(bucket.read(u"kopia.png"_s), "bytes");
    struct stat status = {};
    QCOMPARE(::stat(bucket.file(u"kopia.png"_s).bytes().constData(), &status), 0);
    QCOMPARE(status.st_mode & 0777, mode_t(0640));
    QCOMPARE(status.st_mtim.tv_sec, 2'000'000);
}

void ExclusiveCopyTests::aFolderIsCopiedWithAllBelow()
{
    const Bucket bucket({{"mapp/A.md", "a"}, {"mapp/inre/B.md", "b"}});
    QCOMPARE(::symlink("A.md", bucket.file(u"mapp/länk"_s).bytes().constData()), 0);

    QCOMPARE(copyExclusively(bucket.folder(u"mapp"_s), bucket.folder(u"kopia"_s)), 0);

    QCOMPARE(bucket.names(u"kopia"_s), bucket.names(u"mapp"_s));
    QCOMPARE(bucket.read(u"kopia/inre/B.md"_s), "b");
    QVERIFY(QFileInfo(bucket.file(u"kopia/länk"_s).path()).isSymLink());
}

void ExclusiveCopyTests::whatExistsIsNeverReplaced()
{
    const Bucket bucket({{"A.md", "a"}, {"B.md", "b"}});

    QCOMPARE(copyExclusively(bucket.file(u"A.md"_s), bucket.file(u"B.md"_s)), EEXIST);

    QCOMPARE(bucket.read(u"B.md"_s), "b");
    QCOMPARE(bucket.names().size(), 2);
}

void ExclusiveCopyTests::whatAppearsDuringTheCopyIsNeverReplaced()
{
    const Bucket bucket({{"A.md", "a"}});
    FaultyCalls calls;
    calls.interfere = [&](int, const QByteArray& call) {
        if (call == "renameat2")
            bucket.write(u"B.md"_s, "någon annans");
        return 0;
    };

    QCOMPARE(copyExclusively(bucket.file(u"A.md"_s), bucket.file(u"B.md"_s), calls), EEXIST);

    QCOMPARE(bucket.read(u"B.md"_s), "någon annans");
    QCOMPARE(bucket.names(), QStringList({u"A.md"_s, u"B.md"_s}));
}

void ExclusiveCopyTests::aCopyThatFailsLeavesNothing_data()
{
    QTest::addColumn<QByteArray>("failing");
    QTest::newRow("sync") << QByteArray("fsync");
    QTest::newRow("naming") << QByteArray("renameat2");
}

void ExclusiveCopyTests::aCopyThatFailsLeavesNothing()
{
    QFETCH(QByteArray, failing);
    const Bucket bucket({{"A.md", "a"}});
    FaultyCalls calls;
    calls.interfere = [&](int, const QByteArray& call) { return call == failing ? EIO : 0; };

    QCOMPARE(copyExclusively(bucket.file(u"A.md"_s), bucket.file(u"B.md"_s), calls), EIO);

    QCOMPARE(bucket.names(), QStringList(u"A.md"_s));
}

void ExclusiveCopyTests::whatIsNoFileOrFolderIsNotCopied()
{
    const Bucket bucket;
    QCOMPARE(::mkfifo(bucket.file(u"rör"_s).bytes().constData(), 0600), 0);

    QVERIFY(copyExclusively(bucket.file(u"rör"_s), bucket.file(u"kopia"_s)) != 0);
    QCOMPARE(copyExclusively(bucket.file(u"saknas"_s), bucket.file(u"kopia"_s)), ENOENT);

    QVERIFY(bucket.exists(u"rör"_s));
    QCOMPARE(bucket.names(), QStringList()); // which lists files and folders only
}

QTEST_APPLESS_MAIN(ExclusiveCopyTests)
#include "ExclusiveCopyTests.moc"
