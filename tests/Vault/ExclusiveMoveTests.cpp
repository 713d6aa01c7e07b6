#include "Vault/ExclusiveMove.h"

#include "Fakes/Bucket.h"
#include "Fakes/ChildProcess.h"
#include "Fakes/FaultyCalls.h"

#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace wendlore;
using namespace Qt::StringLiterals;

class ExclusiveMoveTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void filesAndFoldersMoveOnEveryKindOfFileSystem_data() { addFileSystems(); }
    void filesAndFoldersMoveOnEveryKindOfFileSystem();
    void whatExistsIsNeverReplaced_data() { addFileSystems(); }
    void whatExistsIsNeverReplaced();
    void whatAppearsMeanwhileIsNeverReplaced_data() { addFileSystems(); }
    void whatAppearsMeanwhileIsNeverReplaced();
    void aMissingItemLeavesNothingBehind_data() { addFileSystems(); }
    void aMissingItemLeavesNothingBehind();
    void aFolderDoesNotMoveIntoItself_data() { addFileSystems(); }
    void aFolderDoesNotMoveIntoItself();
    void aSymbolicLinkMovesAsALink();
    void namesWithANulAreRefused();
    void movesAgainstAnotherProcessReplaceNothing();
    void betweenFileSystemsTheWholeFolderMoves();
    void anOriginalChangedDuringTheCopyStays();
    void aFullFileSystemLeavesTheOriginal();

private:
    static void addFileSystems();
    /// A file system that lacks what the row says.
    static std::unique_ptr<FaultyCalls> fileSystem();
};

void ExclusiveMoveTests::addFileSystems()
{
    QTest::addColumn<QByteArrayList>("missing");
    QTest::newRow("ordinary") << QByteArrayList();
    QTest::newRow("no exclusive renaming") << QByteArrayList({"renameat2"});
    QTest::newRow("no links either") << QByteArrayList({"renameat2", "linkat"});
}

std::unique_ptr<FaultyCalls> ExclusiveMoveTests::fileSystem()
{
    QFETCH(QByteArrayList, missing);
    auto calls = std::make_unique<FaultyCalls>();
    calls->interfere = [missing](int, const QByteArray& call) {
        return missing.contains(call) ? (call == "linkat" ? EPERM : EINVAL) : 0;
    };
    return calls;
}

void ExclusiveMoveTests::filesAndFoldersMoveOnEveryKindOfFileSystem()
{
    const Bucket bucket({{"A.md", "text"}, {"mapp/B.md", "b"}, {"mål/", ""}});
    const auto calls = fileSystem();

    QCOMPARE(moveExclusively(bucket.file(u"A.md"_s), bucket.file(u"mål/C.md"_s), *calls), 0);
    QCOMPARE(moveExclusively(bucket.folder(u"mapp"_s), bucket.folder(u"mål/mapp"_s), *calls), 0);

    QCOMPARE(bucket.names(), QStringList(u"mål"_s));
    QCOMPARE(bucket.read(u"mål/C.md"_s), "text");
    QCOMPARE(bucket.read(u"mål/mapp/B.md"_s), "b");
}

void ExclusiveMoveTests::whatExistsIsNeverReplaced()
{
    const Bucket bucket({{"A.md", "a"}, {"B.md", "b"}, {"mapp/C.md", "c"}, {"tom/", ""}});
    QCOMPARE(::symlink("saknas", bucket.file(u"länk"_s).bytes().constData()), 0);
    const QStringList before = bucket.names();
    const auto calls = fileSystem();

    for (const QString& taken : {u"B.md"_s, u"tom"_s, u"länk"_s}) {
        QCOMPARE(moveExclusively(bucket.file(u"A.md"_s), bucket.file(taken), *calls), EEXIST);
        QCOMPARE(moveExclusively(bucket.folder(u"mapp"_s), bucket.file(taken), *calls), EEXIST);
    }

    QCOMPARE(bucket.names(), before);
    QCOMPARE(bucket.read(u"A.md"_s), "a");
    QCOMPARE(bucket.read(u"B.md"_s), "b");
    QCOMPARE(bucket.read(u"mapp/C.md"_s), "c");
}

void ExclusiveMoveTests::whatAppearsMeanwhileIsNeverReplaced()
{
    const Bucket bucket({{"A.md", "a"}, {"mapp/C.md", "c"}});
    const auto calls = fileSystem();
    // Right before the call that gives the name, another program takes it.
    calls->interfere = [&, lacking = calls->interfere](int number, const QByteArray& call) {
        const int error = lacking(number, call);
        const bool isDeciding = call == "renameat2" || call == "linkat" || call == "mkdirat" ||
                                (call == "openat" && calls->made.contains("linkat"));
        if (isDeciding && error == 0)
            bucket.write(u"mål"_s, "någon annans");
        return error;
    };

    QCOMPARE(moveExclusively(bucket.file(u"A.md"_s), bucket.file(u"mål"_s), *calls), EEXIST);
    bucket.remove(u"mål"_s);
    QCOMPARE(moveExclusively(bucket.folder(u"mapp"_s), bucket.folder(u"mål"_s), *calls), EEXIST);

    QCOMPARE(bucket.read(u"mål"_s), "någon annans");
    QCOMPARE(bucket.read(u"A.md"_s), "a");
    QCOMPARE(bucket.read(u"mapp/C.md"_s), "c");
}

void ExclusiveMoveTests::aMissingItemLeavesNothingBehind()
{
    const Bucket bucket({{"A.md", "a"}});
    const auto calls = fileSystem();

    QCOMPARE(moveExclusively(bucket.file(u"saknas"_s), bucket.file(u"mål"_s), *calls), ENOENT);
    QCOMPARE(moveExclusively(bucket.file(u"A.md"_s), bucket.file(u"saknas/mål"_s), *calls), ENOENT);

    QCOMPARE(bucket.names(), QStringList(u"A.md"_s));
}

void ExclusiveMoveTests::aFolderDoesNotMoveIntoItself()
{
    const Bucket bucket({{"mapp/C.md", "c"}});
    const auto calls = fileSystem();

    QCOMPARE(moveExclusively(bucket.folder(u"mapp"_s), bucket.folder(u"mapp/inre"_s), *calls), EINVAL);

    QCOMPARE(bucket.names(u"mapp"_s), QStringList(u"C.md"_s));
}

void ExclusiveMoveTests::aSymbolicLinkMovesAsALink()
{
    const Bucket bucket({{"A.md", "a"}, {"mål/", ""}});
    QCOMPARE(::symlink("A.md", bucket.file(u"länk"_s).bytes().constData()), 0);

    QCOMPARE(moveExclusively(bucket.file(u"länk"_s), bucket.file(u"mål/länk"_s)), 0);

    QVERIFY(QFileInfo(bucket.file(u"mål/länk"_s).path()).isSymLink());
    QCOMPARE(bucket.read(u"A.md"_s), "a");
}

void ExclusiveMoveTests::namesWithANulAreRefused()
{
    const Bucket bucket({{"A.md", "a"}});

    QCOMPARE(moveExclusively(bucket.file(u"A.md"_s), bucket.file(u"B\0C"_s)), EINVAL);

    QCOMPARE(bucket.names(), QStringList(u"A.md"_s));
}

void ExclusiveMoveTests::movesAgainstAnotherProcessReplaceNothing()
{
    constexpr int rounds = 300;
    const Bucket bucket({{"från/", ""}, {"mål/", ""}});
    for (int round = 0; round < rounds; ++round)
        bucket.write(u"från/%1"_s.arg(round), "flyttad");

    ChildProcess other([&] {
        QByteArray made;
        for (int round = 0; round < rounds; ++round) {
            QFile file(bucket.file(u"mål/%1"_s.arg(round)).path());
            const bool isMade =
                file.open(QIODevice::WriteOnly | QIODevice::NewOnly) && file.write("annan") == 5;
            made += isMade ? 'm' : '-';
        }
        return made;
    });
    QByteArray moved;
    for (int round = 0; round < rounds; ++round) {
        const QString name = QString::number(round);
        const int error = moveExclusively(bucket.file(u"från/"_s + name), bucket.file(u"mål/"_s + name));
        moved += error == 0 ? 'm' : '-';
    }
    const QByteArray made = other.finish().said;

    QCOMPARE(made.size(), rounds);
    for (int round = 0; round < rounds; ++round) {
        const QString name = QString::number(round);
        QVERIFY(made[round] != moved[round]);
        QCOMPARE(bucket.read(u"mål/"_s + name), made[round] == 'm' ? "annan" : "flyttad");
        QCOMPARE(bucket.exists(u"från/"_s + name), made[round] == 'm');
    }
}

void ExclusiveMoveTests::betweenFileSystemsTheWholeFolderMoves()
{
    const Bucket bucket({{"mapp/A.md", "a"}, {"mapp/inre/B.md", "b"}, {"mål/", ""}});
    FaultyCalls calls;
    calls.interfere = [&](int, const QByteArray& call) {
        return call == "renameat2" && calls.made.count("renameat2") == 1 ? EXDEV : 0;
    };
    const timespec times[] = {{1'000'000, 0}, {1'000'000, 5}};
    const QByteArray note = bucket.file(u"mapp/A.md"_s).bytes();
    QCOMPARE(::utimensat(-1, note.constData(), times, 0), 0);

    QCOMPARE(moveExclusively(bucket.folder(u"mapp"_s), bucket.folder(u"mål/mapp"_s), calls), 0);

    QCOMPARE(bucket.names(), QStringList(u"mål"_s));
    QCOMPARE(bucket.names(u"mål"_s), QStringList(u"mapp"_s));
    QCOMPARE(bucket.read(u"mål/mapp/A.md"_s), "a");
    QCOMPARE(bucket.read(u"mål/mapp/inre/B.md"_s), "b");
    struct stat status = {};
    QCOMPARE(::stat(bucket.file(u"mål/mapp/A.md"_s).bytes().constData(), &status), 0);
    QCOMPARE(status.st_mtim.tv_sec, 1'000'000);
}

void ExclusiveMoveTests::anOriginalChangedDuringTheCopyStays()
{
    const Bucket bucket({{"mapp/A.md", "a"}, {"mål/", ""}});
    FaultyCalls calls;
    calls.interfere = [&](int, const QByteArray& call) {
        if (call == "syncfs")
            bucket.write(u"mapp/Ny.md"_s, "under tiden");
        return call == "renameat2" && calls.made.count("renameat2") == 1 ? EXDEV : 0;
    };

    QCOMPARE(moveExclusively(bucket.folder(u"mapp"_s), bucket.folder(u"mål/mapp"_s), calls), EBUSY);

    QCOMPARE(bucket.names(u"mapp"_s), QStringList({u"A.md"_s, u"Ny.md"_s}));
    QCOMPARE(bucket.names(u"mål"_s), QStringList());
}

void ExclusiveMoveTests::aFullFileSystemLeavesTheOriginal()
{
    const Bucket bucket({{"mål/", ""}});
    bucket.write(u"Stor.md"_s, QByteArray(600'000, 's'));

    const ChildResult child = ChildProcess::run([&] {
        limitRoom(bucket.folder(u"mål"_s).bytes(), 300'000);
        FaultyCalls calls;
        calls.interfere = [&](int, const QByteArray& call) {
            return call == "renameat2" && calls.made.count("renameat2") == 1 ? EXDEV : 0;
        };
        const int error = moveExclusively(bucket.file(u"Stor.md"_s), bucket.file(u"mål/Stor.md"_s), calls);
        const bool isKept = bucket.read(u"Stor.md"_s).size() == 600'000;
        return (error != 0 ? "failed, "_ba : "moved, "_ba) + (isKept ? "kept, " : "lost, ") +
               QByteArray::number(bucket.names(u"mål"_s).size());
    });

    QCOMPARE(child.said, "failed, kept, 0");
}

QTEST_APPLESS_MAIN(ExclusiveMoveTests)
#include "ExclusiveMoveTests.moc"
