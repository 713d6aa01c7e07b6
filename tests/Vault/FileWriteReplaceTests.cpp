#include "Fakes/Bucket.h"
#include "Fakes/FaultyCalls.h"
#include "Vault/AtomicFile.h"
#include "Vault/FileWrite.h"

#include <QSemaphore>
#include <QTest>

#include <cstdio>
#include <thread>

#include <fcntl.h>

using namespace wendlore;
using namespace Qt::StringLiterals;

/// What other programs do between two calls, and file systems that lack some calls.
class FileWriteReplaceTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bytesReachTheDiskBeforeTheirNameDoes();
    void aSweepDuringTheWriteSparesIt();
    void aTemporaryFileSweptBeforeItsRenameIsMadeAgain();
    void aTargetThatVanishesIsMadeAnew();
    void aTargetThatChangedSinceItWasSeenIsLeft_data();
    void aTargetThatChangedSinceItWasSeenIsLeft();
    void aTargetThatIsAsItWasSeenIsReplaced();
    void aVersionThatComesWithTheReplacementIsKept();
    void whateverComesInTheLastMomentNothingIsLost();
    void aTargetThatVanishesWithTheReplacementIsMadeAgain();
    void aTargetThatAppearsAgainIsLeft();
    void replacingWorksWithoutExchange();
    void aTargetThatAppearsWhileCreatingIsKept_data();
    void aTargetThatAppearsWhileCreatingIsKept();
    void creatingWorksWithoutCall_data();
    void creatingWorksWithoutCall();
    void aFolderThatCannotBeSyncedIsWrittenTo();
};

void FileWriteReplaceTests::bytesReachTheDiskBeforeTheirNameDoes()
{
    const Bucket bucket({{"A.md", "gammal"}});
    FaultyCalls calls;

    QVERIFY(FileWrite(calls, {}, bucket.file(u"A.md"_s), "ny").write().succeeded());

    const qsizetype firstSync = calls.made.indexOf("fsync");
    const qsizetype lastSync = calls.made.lastIndexOf("fsync");
    const qsizetype naming = calls.made.indexOf("renameat");
    QVERIFY(calls.made.indexOf("pwrite") < firstSync);
    QVERIFY(firstSync < naming);
    QVERIFY(naming < lastSync);
}

void FileWriteReplaceTests::aSweepDuringTheWriteSparesIt()
{
    const Bucket bucket({{"A.md", "gammal"}});
    FaultyCalls calls;
    int swept = 0;
    calls.interfere = [&](int, const QByteArray& call) {
        if (call == "fsync")
            swept += AtomicFile::sweepLeftovers(bucket.root());
        return 0;
    };

    QVERIFY(FileWrite(calls, {}, bucket.file(u"A.md"_s), "ny").write().succeeded());

    QCOMPARE(swept, 0);
    QCOMPARE(bucket.read(u"A.md"_s), "ny");
}

void FileWriteReplaceTests::aTemporaryFileSweptBeforeItsRenameIsMadeAgain()
{
    for (const bool isCreating : {false, true}) {
        const Bucket bucket;
        FaultyCalls calls;
        int swept = 0;
        calls.interfere = [&](int, const QByteArray& call) {
            if (call.startsWith("renameat") && swept == 0)
                swept += AtomicFile::sweepLeftovers(bucket.root());
            return 0;
        };
        FileWrite write(calls, {}, bucket.file(u"A.md"_s), "ny");

        QVERIFY((isCreating ? write.create() : write.write()).succeeded());

        QCOMPARE(swept, 1);
        QCOMPARE(bucket.read(u"A.md"_s), "ny");
    }
}

void FileWriteReplaceTests::aTargetThatVanishesIsMadeAnew()
{
    const Bucket bucket({{"A.md", "gammal"}});
    FaultyCalls calls;
    calls.interfere = [&](int, const QByteArray& call) {
        if (call == "openat" && calls.made.contains("fstatat"))
            bucket.remove(u"A.md"_s);
        return 0;
    };

    QVERIFY(FileWrite(calls, {}, bucket.file(u"A.md"_s), "ny").write().succeeded());

    QCOMPARE(bucket.read(u"A.md"_s), "ny");
}

void FileWriteReplaceTests::aTargetThatChangedSinceItWasSeenIsLeft_data()
{
    QTest::addColumn<QByteArray>("moment");
    QTest::newRow("before the write") << QByteArray();
    QTest::newRow("while the bytes go to disk") << QByteArray("fsync");
}

void FileWriteReplaceTests::aTargetThatChangedSinceItWasSeenIsLeft()
{
    QFETCH(QByteArray, moment);
    const Bucket bucket({{"A.md", "sedd"}});
    FaultyCalls calls;
    if (moment.isEmpty())
        bucket.write(u"A.md"_s, "deras");
    calls.interfere = [&](int, const QByteArray& call) {
        if (call == moment)
            bucket.write(u"A.md"_s, "deras");
        return 0;
    };

    const WriteResult result = FileWrite(calls, {}, bucket.file(u"A.md"_s), "vår").writeOver("sedd");

    QCOMPARE(result.outcome, WriteOutcome::Changed);
    QVERIFY(!result.succeeded());
    QCOMPARE(bucket.read(u"A.md"_s), "deras");
    QCOMPARE(bucket.names(), QStringList(u"A.md"_s));
}

void FileWriteReplaceTests::aTargetThatIsAsItWasSeenIsReplaced()
{
    const Bucket bucket({{"A.md", "sedd"}});
    FaultyCalls calls;
    const auto write = [&] { return FileWrite(calls, {}, bucket.file(u"A.md"_s), "vår").writeOver("sedd"); };

    QCOMPARE(write().outcome, WriteOutcome::Replaced);
    QCOMPARE(bucket.read(u"A.md"_s), "vår");
    bucket.remove(u"A.md"_s);
    QCOMPARE(write().outcome, WriteOutcome::Replaced);
    QCOMPARE(bucket.read(u"A.md"_s), "vår");
}

void FileWriteReplaceTests::aVersionThatComesWithTheReplacementIsKept()
{
    const Bucket bucket({{"A.md", "sedd"}});
    FaultyCalls calls;
    calls.interfere = [&](int, const QByteArray& call) {
        if (call == "exchange")
            bucket.write(u"A.md"_s, "deras");
        return 0;
    };

    const WriteResult result = FileWrite(calls, {}, bucket.file(u"A.md"_s), "vår").writeOver("sedd");

    QCOMPARE(result.outcome, WriteOutcome::Replaced);
    QCOMPARE(bucket.read(u"A.md"_s), "vår");
    QCOMPARE(bucket.names(), QStringList({result.displaced.lastPathComponent(), u"A.md"_s}));
    QCOMPARE(bucket.read(result.displaced.lastPathComponent()), "deras");
    QCOMPARE(AtomicFile::sweepLeftovers(bucket.root()), 0);
}

void FileWriteReplaceTests::whateverComesInTheLastMomentNothingIsLost()
{
    constexpr int rounds = 150;
    for (int round = 0; round < rounds; ++round) {
        const Bucket bucket({{"A.md", "sedd"}, {"B.md", "deras"}});
        const QByteArray here = bucket.file(u"A.md"_s).bytes();
        const QByteArray there = bucket.file(u"B.md"_s).bytes();
        QSemaphore hasLooked;
        std::jthread other([&] {
            hasLooked.acquire();
            ::renameat2(AT_FDCWD, there.constData(), AT_FDCWD, here.constData(), RENAME_EXCHANGE);
        });
        FaultyCalls calls;
        calls.interfere = [&](int, const QByteArray& call) {
            if (call == "renameat" && hasLooked.available() == 0)
                hasLooked.release();
            return 0;
        };

        const WriteResult result = FileWrite(calls, {}, bucket.file(u"A.md"_s), "vår").writeOver("sedd");
        hasLooked.release(); // in case it never looked
        other.join();

        QByteArrayList kept;
        for (const QString& name : bucket.names())
            kept.append(bucket.read(name));
        QVERIFY(kept.contains("deras"));
        QCOMPARE(kept.contains("vår"), result.outcome == WriteOutcome::Replaced);
    }
}

void FileWriteReplaceTests::aTargetThatVanishesWithTheReplacementIsMadeAgain()
{
    const Bucket bucket({{"A.md", "sedd"}});
    FaultyCalls calls;
    calls.interfere = [&](int, const QByteArray& call) {
        if (call == "exchange")
            bucket.remove(u"A.md"_s);
        return 0;
    };

    const WriteResult result = FileWrite(calls, {}, bucket.file(u"A.md"_s), "vår").writeOver("sedd");

    QCOMPARE(result.outcome, WriteOutcome::Replaced);
    QCOMPARE(bucket.read(u"A.md"_s), "vår");
    QCOMPARE(bucket.names(), QStringList(u"A.md"_s));
}

void FileWriteReplaceTests::aTargetThatAppearsAgainIsLeft()
{
    const Bucket bucket;
    FaultyCalls calls;
    calls.interfere = [&](int, const QByteArray& call) {
        if (call == "renameat2")
            bucket.write(u"A.md"_s, "deras");
        return 0;
    };

    const WriteResult result = FileWrite(calls, {}, bucket.file(u"A.md"_s), "vår").writeOver("sedd");

    QCOMPARE(result.outcome, WriteOutcome::Changed);
    QCOMPARE(bucket.read(u"A.md"_s), "deras");
    QCOMPARE(bucket.names(), QStringList(u"A.md"_s));
}

void FileWriteReplaceTests::replacingWorksWithoutExchange()
{
    for (const int error : {EINVAL, ENOSYS, EOPNOTSUPP}) {
        const Bucket bucket({{"A.md", "sedd"}});
        FaultyCalls calls;
        calls.interfere = [&](int, const QByteArray& call) { return call == "exchange" ? error : 0; };

        const WriteResult result = FileWrite(calls, {}, bucket.file(u"A.md"_s), "vår").writeOver("sedd");

        QCOMPARE(result.outcome, WriteOutcome::Replaced);
        QVERIFY(result.displaced.isEmpty());
        QCOMPARE(bucket.read(u"A.md"_s), "vår");
        QCOMPARE(bucket.names(), QStringList(u"A.md"_s));
    }
}

void FileWriteReplaceTests::aTargetThatAppearsWhileCreatingIsKept_data()
{
    QTest::addColumn<QByteArrayList>("missing");
    QTest::newRow("by renaming") << QByteArrayList();
    QTest::newRow("by linking") << QByteArrayList({"renameat2"});
    QTest::newRow("directly") << QByteArrayList({"renameat2", "linkat"});
}

void FileWriteReplaceTests::aTargetThatAppearsWhileCreatingIsKept()
{
    QFETCH(QByteArrayList, missing);
    const Bucket bucket;
    FaultyCalls calls;
    calls.interfere = [&](int, const QByteArray& call) {
        if (call == "renameat2")
            bucket.write(u"A.md"_s, "någon annans");
        return missing.contains(call) ? (call == "linkat" ? EPERM : EINVAL) : 0;
    };

    const WriteResult result = FileWrite(calls, {}, bucket.file(u"A.md"_s), "ny").create();

    QCOMPARE(result.outcome, WriteOutcome::Taken);
    QCOMPARE(bucket.read(u"A.md"_s), "någon annans");
    QCOMPARE(bucket.names(), QStringList(u"A.md"_s));
}

void FileWriteReplaceTests::creatingWorksWithoutCall_data()
{
    QTest::addColumn<QByteArrayList>("missing");
    QTest::addColumn<int>("error");
    QTest::newRow("exclusive renaming") << QByteArrayList({"renameat2"}) << EINVAL;
    QTest::newRow("old kernel") << QByteArrayList({"renameat2"}) << ENOSYS;
    QTest::newRow("links") << QByteArrayList({"renameat2", "linkat"}) << EOPNOTSUPP;
    QTest::newRow("locks") << QByteArrayList({"flock"}) << ENOLCK;
}

void FileWriteReplaceTests::creatingWorksWithoutCall()
{
    QFETCH(QByteArrayList, missing);
    QFETCH(int, error);
    const Bucket bucket;
    FaultyCalls calls;
    calls.interfere = [&](int, const QByteArray& call) { return missing.contains(call) ? error : 0; };

    QVERIFY(FileWrite(calls, {}, bucket.file(u"A.md"_s), "ny").create().succeeded());

    QCOMPARE(bucket.read(u"A.md"_s), "ny");
    QCOMPARE(bucket.names(), QStringList(u"A.md"_s));
}

void FileWriteReplaceTests::aFolderThatCannotBeSyncedIsWrittenTo()
{
    const Bucket bucket({{"A.md", "gammal"}});
    FaultyCalls calls;
    calls.interfere = [&](int, const QByteArray& call) {
        const bool isFolder = calls.made.count("fsync") == 2;
        return call == "fsync" && isFolder ? EINVAL : 0;
    };

    QVERIFY(FileWrite(calls, {}, bucket.file(u"A.md"_s), "ny").write().succeeded());

    QCOMPARE(bucket.read(u"A.md"_s), "ny");
}

QTEST_APPLESS_MAIN(FileWriteReplaceTests)
#include "FileWriteReplaceTests.moc"
