#include "Fakes/Bucket.h"
#include "Fakes/ChildProcess.h"
#include "Fakes/FaultyCalls.h"
#include "Vault/AtomicFile.h"
#include "Vault/FileWrite.h"

#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace wendlore;
using namespace Qt::StringLiterals;

namespace {

struct stat statusOf(const FileURL& file)
{
    struct stat status = {};
    if (::stat(file.bytes().constData(), &status) == -1)
        qFatal("no %s", file.bytes().constData());
    return status;
}

void setMode(const FileURL& file, mode_t mode)
{
    if (::chmod(file.bytes().constData(), mode) == -1)
        qFatal("no mode for %s", file.bytes().constData());
}

void giveToOrdinaryUser(const FileURL& file)
{
    if (isSuperuser() && ::chown(file.bytes().constData(), ordinaryUser, ordinaryUser) == -1)
        qFatal("cannot give %s away", file.bytes().constData());
}

const char* nameOf(WriteOutcome outcome)
{
    constexpr const char* names[] = {"Unchanged", "Replaced", "InPlace", "Taken", "Changed", "Failed"};
    return names[int(outcome)];
}

} // namespace

class FileWriteInPlaceTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void hardLinksStayTogether();
    void aReadOnlyFolderIsWrittenTo();
    void aReadOnlyFileInAReadOnlyFolderFails();
    void someoneElsesFileKeepsItsOwner();
    void aFileThatChangedSinceItWasSeenIsLeft();
    void theBackupGoesAfterwards();
    void withoutAFolderForBackupsNothingIsTouched();
    void aBackupThatCannotBeWrittenLeavesTheFile();
    void aFileReplacedMeanwhileIsLookedAtAgain();
    void twoProcessesLeaveTheBytesOfOne();

private:
    [[nodiscard]] FileURL note() const { return m_bucket->file(u"mapp/A.md"_s); }
    /// Saves as an ordinary user in a child and tells the outcome and what the note holds then.
    [[nodiscard]] QByteArray saveAsOrdinaryUser(const QByteArray& bytes) const;
    /// How a write ended, and what the note holds.
    [[nodiscard]] QByteArray outcome(const WriteResult& result) const
    {
        return nameOf(result.outcome) + (": " + m_bucket->read(u"mapp/A.md"_s));
    }
    void linkNote() const;

    std::unique_ptr<Bucket> m_bucket;
    FileURL m_backups;
};

void FileWriteInPlaceTests::init()
{
    m_bucket = std::make_unique<Bucket>(std::initializer_list<std::pair<const char*, const char*>>{
        {"mapp/A.md", "gammal text"}, {"state/", ""}, {"länkar/", ""}});
    m_backups = m_bucket->folder(u"state/interrupted"_s);
    AtomicFile::setBackupDirectory(m_backups);
    setMode(m_bucket->root(), 0755);
    giveToOrdinaryUser(m_bucket->folder(u"state"_s));
}

QByteArray FileWriteInPlaceTests::saveAsOrdinaryUser(const QByteArray& bytes) const
{
    return ChildProcess::run([&] {
               becomeOrdinaryUser();
               return outcome(AtomicFile::write(note(), bytes));
           })
        .said;
}

void FileWriteInPlaceTests::linkNote() const
{
    QCOMPARE(::link(note().bytes().constData(), m_bucket->file(u"länkar/B.md"_s).bytes().constData()), 0);
}

void FileWriteInPlaceTests::hardLinksStayTogether()
{
    linkNote();

    for (const QByteArray& text : {"kort"_ba, "en mycket längre text"_ba, ""_ba, "åter"_ba}) {
        QCOMPARE(AtomicFile::write(note(), text).outcome, WriteOutcome::InPlace);
        QCOMPARE(m_bucket->read(u"länkar/B.md"_s), text);
    }

    QCOMPARE(statusOf(note()).st_nlink, nlink_t(2));
}

void FileWriteInPlaceTests::aReadOnlyFolderIsWrittenTo()
{
    giveToOrdinaryUser(note());
    setMode(m_bucket->folder(u"mapp"_s), 0555);

    const QByteArray said = saveAsOrdinaryUser("ny text");
    setMode(m_bucket->folder(u"mapp"_s), 0755);

    QCOMPARE(said, "InPlace: ny text");
    QCOMPARE(m_bucket->names(u"mapp"_s), QStringList(u"A.md"_s));
}

void FileWriteInPlaceTests::aReadOnlyFileInAReadOnlyFolderFails()
{
    giveToOrdinaryUser(note());
    setMode(note(), 0444);
    setMode(m_bucket->folder(u"mapp"_s), 0555);

    const QByteArray said = saveAsOrdinaryUser("ny text");
    setMode(m_bucket->folder(u"mapp"_s), 0755);

    QCOMPARE(said, "Failed: gammal text");
}

void FileWriteInPlaceTests::someoneElsesFileKeepsItsOwner()
{
    // For an ordinary user every file that a test can make is its own; there the refusal is made up.
    setMode(note(), 0666);
    setMode(m_bucket->folder(u"mapp"_s), 0777);
    FaultyCalls calls;
    calls.interfere = [](int, const QByteArray& call) { return call == "fchmod" ? EPERM : 0; };

    const QByteArray said = isSuperuser() ? saveAsOrdinaryUser("ny text")
                                          : outcome(FileWrite(calls, m_backups, note(), "ny text").write());

    QCOMPARE(said, "InPlace: ny text");
    QCOMPARE(statusOf(note()).st_uid, ::geteuid());
}

void FileWriteInPlaceTests::aFileThatChangedSinceItWasSeenIsLeft()
{
    linkNote();
    FaultyCalls calls;
    const auto write = [&] { return FileWrite(calls, m_backups, note(), "ny text").writeOver("sedd text"); };

    QCOMPARE(outcome(write()), "Changed: gammal text");
    m_bucket->write(u"mapp/A.md"_s, "sedd text");
    QCOMPARE(outcome(write()), "InPlace: ny text");
}

void FileWriteInPlaceTests::theBackupGoesAfterwards()
{
    linkNote();
    int backups = 0;
    FaultyCalls calls;
    calls.interfere = [&](int, const QByteArray& call) {
        if (call == "ftruncate")
            backups = int(m_bucket->names(u"state/interrupted"_s).filter(u".backup"_s).size());
        return 0;
    };

    QVERIFY(FileWrite(calls, m_backups, note(), "ny").write().succeeded());

    QCOMPARE(backups, 1);
    QCOMPARE(m_bucket->names(u"state/interrupted"_s), QStringList(u"lock"_s));
}

void FileWriteInPlaceTests::withoutAFolderForBackupsNothingIsTouched()
{
    linkNote();
    AtomicFile::setBackupDirectory({});

    QCOMPARE(AtomicFile::write(note(), "ny").outcome, WriteOutcome::Failed);

    QCOMPARE(m_bucket->read(u"mapp/A.md"_s), "gammal text");
}

void FileWriteInPlaceTests::aBackupThatCannotBeWrittenLeavesTheFile()
{
    linkNote();
    FaultyCalls calls;
    calls.interfere = [](int, const QByteArray& call) { return call == "pwrite" ? ENOSPC : 0; };

    const WriteResult result = FileWrite(calls, m_backups, note(), "ny").write();

    QCOMPARE(result.outcome, WriteOutcome::Failed);
    QVERIFY2(result.error.contains(u"no backup"), qPrintable(result.error));
    QCOMPARE(m_bucket->read(u"mapp/A.md"_s), "gammal text");
}

void FileWriteInPlaceTests::aFileReplacedMeanwhileIsLookedAtAgain()
{
    linkNote();
    FaultyCalls calls;
    bool isReplaced = false;
    calls.interfere = [&](int, const QByteArray& call) {
        if (call == "flock" && !isReplaced) {
            m_bucket->write(u"mapp/C.md"_s, "någon annans");
            isReplaced =
                ::rename(m_bucket->file(u"mapp/C.md"_s).bytes().constData(), note().bytes().constData()) == 0;
        }
        return 0;
    };

    const WriteResult result = FileWrite(calls, m_backups, note(), "ny").write();

    QVERIFY(isReplaced);
    QCOMPARE(result.outcome, WriteOutcome::Replaced);
    QCOMPARE(m_bucket->read(u"mapp/A.md"_s), "ny");
    QCOMPARE(m_bucket->read(u"länkar/B.md"_s), "gammal text");
}

void FileWriteInPlaceTests::twoProcessesLeaveTheBytesOfOne()
{
    linkNote();
    const auto writeManyTimes = [&](char letter) {
        return [this, letter] {
            bool isSaved = true;
            for (int size = 100'000; size < 100'040; ++size)
                isSaved = AtomicFile::write(note(), QByteArray(size, letter)).succeeded() && isSaved;
            return isSaved ? "saved"_ba : "failed"_ba;
        };
    };

    ChildProcess first(writeManyTimes('a'));
    ChildProcess second(writeManyTimes('b'));
    QCOMPARE(first.finish().said, "saved");
    QCOMPARE(second.finish().said, "saved");

    const QByteArray bytes = m_bucket->read(u"länkar/B.md"_s);
    QCOMPARE(bytes.size(), 100'039);
    QCOMPARE(bytes.count(bytes.front()), bytes.size());
}

QTEST_APPLESS_MAIN(FileWriteInPlaceTests)
#include "FileWriteInPlaceTests.moc"
