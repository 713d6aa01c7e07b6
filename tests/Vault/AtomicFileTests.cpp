#include "Vault/AtomicFile.h"

#include "Fakes/Bucket.h"
#include "Fakes/ChildProcess.h"
#include "Vault/RecoveredTexts.h"
#include "Vault/TemporaryName.h"

#include <QTest>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace wendlore;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

QString nameOfBytes(int bytes)
{
    return QString(bytes - 3, u'n') + u".md"_s;
}

} // namespace

class AtomicFileTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anExistingFileIsReplaced();
    void aMissingFileIsMade();
    void aFileOfFiftyMegabytesIsWrittenWhole();
    void equalBytesLeaveTheFileUntouched();
    void longNamesAreSavedAgainAndAgain_data();
    void longNamesAreSavedAgainAndAgain();
    void aNameThatIsTooLongFails();
    void aSymbolicLinkStaysALinkToTheSavedFile();
    void aDanglingLinkMakesItsTarget();
    void linksThatFormARingFail();
    void aFolderIsNotWrittenTo();
    void aPipeIsNeitherReadNorReplaced();
    void aLocationThatCannotBeFails();
    void aFullDiskKeepsTheOldBytes();
    void aFullDiskKeepsTheOldBytesOfAHardLinkedFile();
    void aFullDiskMakesNoHalfFile();
    void twoProcessesNeverMixTheirBytes();
    void creatingFailsWhereSomethingExists();
    void creatingFailsWhereALinkDangles();
    void ofManyProcessesOneCreatesTheFile();
    void sweepingRemovesLeftoversOnly();
    void sweepingSparesAWriteInProgress();
    void displacedVersionsOfAKilledWriterAreRecovered();
};

void AtomicFileTests::anExistingFileIsReplaced()
{
    const Bucket bucket({{"Möte.md", "gammal"}});

    const WriteResult result = AtomicFile::write(bucket.file(u"Möte.md"_s), "ny text");

    QCOMPARE(result.outcome, WriteOutcome::Replaced);
    QCOMPARE(result.error, QString());
    QCOMPARE(bucket.read(u"Möte.md"_s), "ny text");
    QCOMPARE(bucket.names(), QStringList(u"Möte.md"_s));
}

void AtomicFileTests::aMissingFileIsMade()
{
    const Bucket bucket;
    const mode_t mask = ::umask(0027);

    const WriteResult result = AtomicFile::write(bucket.file(u"Ny.md"_s), "text");
    ::umask(mask);

    QVERIFY(result.succeeded());
    QCOMPARE(bucket.read(u"Ny.md"_s), "text");
    struct stat status = {};
    QCOMPARE(::stat(bucket.file(u"Ny.md"_s).bytes().constData(), &status), 0);
    QCOMPARE(status.st_mode & 07777, mode_t(0640));
}

void AtomicFileTests::aFileOfFiftyMegabytesIsWrittenWhole()
{
    const Bucket bucket({{"Stor.md", "gammal"}});
    QByteArray bytes;
    for (int line = 0; bytes.size() < 50'000'000; ++line)
        bytes += QByteArray::number(line) + '\n';

    QVERIFY(AtomicFile::write(bucket.file(u"Stor.md"_s), bytes).succeeded());

    QCOMPARE(bucket.read(u"Stor.md"_s), bytes);
}

void AtomicFileTests::equalBytesLeaveTheFileUntouched()
{
    const Bucket bucket({{"A.md", "samma"}});
    const QByteArray path = bucket.file(u"A.md"_s).bytes();
    struct stat before = {};
    struct stat after = {};
    QCOMPARE(::stat(path.constData(), &before), 0);

    const WriteResult result = AtomicFile::write(bucket.file(u"A.md"_s), "samma");

    QCOMPARE(result.outcome, WriteOutcome::Unchanged);
    QCOMPARE(::stat(path.constData(), &after), 0);
    QCOMPARE(after.st_ino, before.st_ino);
    QCOMPARE(after.st_mtim.tv_sec, before.st_mtim.tv_sec);
    QCOMPARE(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
}

void AtomicFileTests::longNamesAreSavedAgainAndAgain_data()
{
    QTest::addColumn<int>("bytes");
    QTest::newRow("249") << 249;
    QTest::newRow("250") << 250;
    QTest::newRow("255") << 255;
}

void AtomicFileTests::longNamesAreSavedAgainAndAgain()
{
    QFETCH(int, bytes);
    const Bucket bucket;
    const QString name = nameOfBytes(bytes);

    for (const QByteArray& text : {"ett"_ba, "två"_ba, "tre"_ba}) {
        QVERIFY(AtomicFile::write(bucket.file(name), text).succeeded());
        QCOMPARE(bucket.read(name), text);
    }

    QCOMPARE(bucket.names(), QStringList(name));
}

void AtomicFileTests::aNameThatIsTooLongFails()
{
    const Bucket bucket;

    const WriteResult result = AtomicFile::write(bucket.file(nameOfBytes(256)), "text");

    QVERIFY(!result.succeeded());
    QVERIFY(!result.error.isEmpty());
    QCOMPARE(bucket.names(), QStringList());
}

void AtomicFileTests::aSymbolicLinkStaysALinkToTheSavedFile()
{
    const Bucket bucket({{"mapp/Riktig.md", "gammal"}, {"länkar/", ""}});
    const QByteArray first = bucket.file(u"länkar/Första.md"_s).bytes();
    const QByteArray second = bucket.file(u"länkar/Andra.md"_s).bytes();
    QCOMPARE(::symlink("../mapp/Riktig.md", first.constData()), 0);
    QCOMPARE(::symlink(first.constData(), second.constData()), 0);

    const WriteResult result = AtomicFile::write(bucket.file(u"länkar/Andra.md"_s), "ny");

    QCOMPARE(result.outcome, WriteOutcome::Replaced);
    QCOMPARE(bucket.read(u"mapp/Riktig.md"_s), "ny");
    QVERIFY(QFileInfo(bucket.file(u"länkar/Första.md"_s).path()).isSymLink());
    QVERIFY(QFileInfo(bucket.file(u"länkar/Andra.md"_s).path()).isSymLink());
    QCOMPARE(bucket.names(u"mapp"_s), QStringList(u"Riktig.md"_s));
}

void AtomicFileTests::aDanglingLinkMakesItsTarget()
{
    const Bucket bucket({{"mapp/", ""}});
    QCOMPARE(::symlink("mapp/Mål.md", bucket.file(u"Länk.md"_s).bytes().constData()), 0);

    QVERIFY(AtomicFile::write(bucket.file(u"Länk.md"_s), "text").succeeded());

    QCOMPARE(bucket.read(u"mapp/Mål.md"_s), "text");
    QVERIFY(QFileInfo(bucket.file(u"Länk.md"_s).path()).isSymLink());
}

void AtomicFileTests::linksThatFormARingFail()
{
    const Bucket bucket;
    QCOMPARE(::symlink("b", bucket.file(u"a"_s).bytes().constData()), 0);
    QCOMPARE(::symlink("a", bucket.file(u"b"_s).bytes().constData()), 0);

    QCOMPARE(AtomicFile::write(bucket.file(u"a"_s), "text").outcome, WriteOutcome::Failed);
}

void AtomicFileTests::aFolderIsNotWrittenTo()
{
    const Bucket bucket({{"mapp/A.md", "kvar"}});

    QCOMPARE(AtomicFile::write(bucket.file(u"mapp"_s), "text").outcome, WriteOutcome::Failed);
    QCOMPARE(AtomicFile::write(FileURL::directory(u"/"_s), "text").outcome, WriteOutcome::Failed);

    QCOMPARE(bucket.read(u"mapp/A.md"_s), "kvar");
}

void AtomicFileTests::aPipeIsNeitherReadNorReplaced()
{
    const Bucket bucket;
    QCOMPARE(::mkfifo(bucket.file(u"rör.md"_s).bytes().constData(), 0600), 0);

    QCOMPARE(AtomicFile::write(bucket.file(u"rör.md"_s), "text").outcome, WriteOutcome::Failed);

    struct stat status = {};
    QCOMPARE(::stat(bucket.file(u"rör.md"_s).bytes().constData(), &status), 0);
    QVERIFY(S_ISFIFO(status.st_mode));
}

void AtomicFileTests::aLocationThatCannotBeFails()
{
    const Bucket bucket;

    QCOMPARE(AtomicFile::write(bucket.file(u"saknas/A.md"_s), "text").outcome, WriteOutcome::Failed);
    QCOMPARE(AtomicFile::create(bucket.file(u"saknas/A.md"_s), "text").outcome, WriteOutcome::Failed);
    QCOMPARE(AtomicFile::write(FileURL(), "text").outcome, WriteOutcome::Failed);
    QCOMPARE(AtomicFile::write(bucket.file(u"A\0B"_s), "text").outcome, WriteOutcome::Failed);

    QCOMPARE(bucket.names(), QStringList());
}

void AtomicFileTests::aFullDiskKeepsTheOldBytes()
{
    const Bucket bucket;
    const QByteArray old(300'000, 'g');

    const ChildResult child = ChildProcess::run([&] {
        limitRoom(bucket.root().bytes(), 512 * 1024);
        bucket.write(u"A.md"_s, old);
        const WriteResult result = AtomicFile::write(bucket.file(u"A.md"_s), QByteArray(600'000, 'n'));
        const bool isKept = bucket.read(u"A.md"_s) == old && bucket.names() == QStringList(u"A.md"_s);
        return (result.succeeded() ? "saved "_ba : "failed "_ba) + (isKept ? "kept" : "lost");
    });

    QCOMPARE(child.said, "failed kept");
}

void AtomicFileTests::aFullDiskKeepsTheOldBytesOfAHardLinkedFile()
{
    const Bucket bucket;
    const QTemporaryDir backups;
    AtomicFile::setBackupDirectory(FileURL::directory(backups.path()));
    const QByteArray old(300'000, 'g');

    const ChildResult child = ChildProcess::run([&] {
        limitRoom(bucket.root().bytes(), 512 * 1024);
        bucket.write(u"A.md"_s, old);
        if (::link(bucket.file(u"A.md"_s).bytes().constData(), bucket.file(u"B.md"_s).bytes().constData()) !=
            0)
            return "no link"_ba;
        const WriteResult result = AtomicFile::write(bucket.file(u"A.md"_s), QByteArray(600'000, 'n'));
        const bool isKept = bucket.read(u"A.md"_s) == old && bucket.read(u"B.md"_s) == old;
        return (result.succeeded() ? "saved "_ba : "failed "_ba) + (isKept ? "kept" : "lost");
    });

    QCOMPARE(child.said, "failed kept");
}

void AtomicFileTests::aFullDiskMakesNoHalfFile()
{
    const Bucket bucket;

    const ChildResult child = ChildProcess::run([&] {
        limitRoom(bucket.root().bytes(), 512 * 1024);
        const QByteArray large(600'000, 'n');
        const bool isSaved = AtomicFile::write(bucket.file(u"A.md"_s), large).succeeded() ||
                             AtomicFile::create(bucket.file(u"B.md"_s), large).succeeded();
        return (isSaved ? "saved "_ba : "failed "_ba) + bucket.names().join(u' ').toUtf8();
    });

    QCOMPARE(child.said, "failed ");
}

void AtomicFileTests::twoProcessesNeverMixTheirBytes()
{
    const Bucket bucket;
    const FileURL note = bucket.file(u"A.md"_s);
    const auto writeManyTimes = [&](char letter) {
        return [&note, letter] {
            bool isSaved = true;
            for (int size = 200'000; size < 200'040; ++size)
                isSaved = AtomicFile::write(note, QByteArray(size, letter)).succeeded() && isSaved;
            return isSaved ? "saved"_ba : "failed"_ba;
        };
    };
    QVERIFY(AtomicFile::write(note, QByteArray(200'000, 'x')).succeeded());

    ChildProcess first(writeManyTimes('a'));
    ChildProcess second(writeManyTimes('b'));
    while (first.isRunning() || second.isRunning()) {
        const QByteArray bytes = bucket.read(u"A.md"_s);
        QVERIFY(bytes.size() >= 200'000);
        QCOMPARE(bytes.count(bytes.front()), bytes.size());
    }

    QCOMPARE(first.finish().said, "saved");
    QCOMPARE(second.finish().said, "saved");
    QCOMPARE(bucket.names(), QStringList(u"A.md"_s));
}

void AtomicFileTests::creatingFailsWhereSomethingExists()
{
    const Bucket bucket({{"A.md", "kvar"}, {"mapp/", ""}});

    QCOMPARE(AtomicFile::create(bucket.file(u"A.md"_s), "ny").outcome, WriteOutcome::Taken);
    QCOMPARE(AtomicFile::create(bucket.file(u"mapp"_s), "ny").outcome, WriteOutcome::Taken);

    QCOMPARE(bucket.read(u"A.md"_s), "kvar");
    QCOMPARE(bucket.names(), QStringList({u"A.md"_s, u"mapp"_s}));
}

void AtomicFileTests::creatingFailsWhereALinkDangles()
{
    const Bucket bucket;
    QCOMPARE(::symlink("saknas", bucket.file(u"A.md"_s).bytes().constData()), 0);

    QCOMPARE(AtomicFile::create(bucket.file(u"A.md"_s), "ny").outcome, WriteOutcome::Taken);

    QVERIFY(!bucket.exists(u"saknas"_s));
}

void AtomicFileTests::ofManyProcessesOneCreatesTheFile()
{
    const Bucket bucket;
    const auto createAll = [&](char letter) {
        return [&bucket, letter] {
            QByteArray made;
            for (int name = 0; name < 60; ++name) {
                const FileURL file = bucket.file(QString::number(name));
                made += AtomicFile::create(file, QByteArray(1, letter)).succeeded() ? letter : '-';
            }
            return made;
        };
    };

    ChildProcess first(createAll('a'));
    ChildProcess second(createAll('b'));
    const QByteArray made = first.finish().said;
    const QByteArray madeBySecond = second.finish().said;

    QCOMPARE(made.size(), 60);
    QCOMPARE(madeBySecond.size(), 60);
    for (int name = 0; name < 60; ++name) {
        const bool isFirst = made[name] == 'a';
        QCOMPARE(madeBySecond[name], isFirst ? '-' : 'b');
        QCOMPARE(bucket.read(QString::number(name)), isFirst ? "a" : "b");
    }
}

void AtomicFileTests::sweepingRemovesLeftoversOnly()
{
    const QByteArray leftover = temporaryName();
    const Bucket bucket({{"A.md", "text"}, {".dold.md", "text"}, {".wendlores-kort", "text"}, {"mapp/", ""}});
    bucket.write(QString::fromLatin1(leftover), "rest");
    bucket.write(u"mapp/"_s + QString::fromLatin1(leftover), "rest");

    QCOMPARE(AtomicFile::sweepLeftovers(bucket.root()), 1);

    QCOMPARE(bucket.names(), QStringList({u".dold.md"_s, u".wendlores-kort"_s, u"A.md"_s, u"mapp"_s}));
    QCOMPARE(bucket.names(u"mapp"_s).size(), 1);
    QCOMPARE(AtomicFile::sweepLeftovers(bucket.folder(u"saknas"_s)), 0);
}

void AtomicFileTests::sweepingSparesAWriteInProgress()
{
    const Bucket bucket;
    const FileURL living = bucket.file(QString::fromLatin1(temporaryName()));
    bucket.write(living.lastPathComponent(), "pågår");
    const int file = ::open(living.bytes().constData(), O_WRONLY);
    QCOMPARE(::flock(file, LOCK_EX), 0);

    QCOMPARE(AtomicFile::sweepLeftovers(bucket.root()), 0);
    ::close(file);
    QCOMPARE(AtomicFile::sweepLeftovers(bucket.root()), 1);
}

void AtomicFileTests::displacedVersionsOfAKilledWriterAreRecovered()
{
    const Bucket bucket({{"A.md", "text"}, {"återfunna/", ""}});
    bucket.write(QString::fromLatin1(displacedName()), "deras");
    bucket.write(QString::fromLatin1(displacedName()), "");
    RecoveredTexts recovered(bucket.folder(u"återfunna"_s));

    QCOMPARE(AtomicFile::sweepLeftovers(bucket.root()), 0);
    QCOMPARE(AtomicFile::recoverDisplaced(bucket.root(), recovered), 0); // its writer may still live
    QCOMPARE(AtomicFile::recoverDisplaced(bucket.root(), recovered, 0s), 2);

    QCOMPARE(bucket.names(), QStringList({u"A.md"_s, u"återfunna"_s}));
    QCOMPARE(bucket.names(u"återfunna"_s).size(), 1);
    QCOMPARE(bucket.read(u"återfunna/"_s + bucket.names(u"återfunna"_s).first()), "deras");
}

QTEST_APPLESS_MAIN(AtomicFileTests)
#include "AtomicFileTests.moc"
