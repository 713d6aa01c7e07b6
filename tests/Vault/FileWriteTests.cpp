#include "Vault/FileWrite.h"

#include "Fakes/Bucket.h"
#include "Fakes/ChildProcess.h"
#include "Fakes/FaultyCalls.h"
#include "Vault/InterruptedWrites.h"
#include "Vault/RecoveredTexts.h"

#include <QTest>

#include <csignal>
#include <memory>

#include <unistd.h>

using namespace wendlore;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QByteArray oldText = QByteArray("gammal rad\n").repeated(400);
const QByteArray newText = QByteArray("en ny rad, längre\n").repeated(300);
/// Small enough that a text takes several writes.
constexpr size_t pieceSize = 1500;

} // namespace

/// Every way of writing, cut off or refused at each of its system calls.
class FileWriteTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aKillAtAnyCallLeavesOldOrNewBytes_data() { addWays(); }
    void aKillAtAnyCallLeavesOldOrNewBytes();
    void anErrorAtAnyCallLeavesOldOrNewBytes_data() { addWays(); }
    void anErrorAtAnyCallLeavesOldOrNewBytes();
    void aDiskThatFailsFromAnyCallOnLeavesOldOrNewBytes_data() { addWays(); }
    void aDiskThatFailsFromAnyCallOnLeavesOldOrNewBytes();
    void interruptedCallsAreMadeAgain_data() { addWays(); }
    void interruptedCallsAreMadeAgain();
    void failingCallsFailTheWrite_data();
    void failingCallsFailTheWrite();
    void aWriteThatTakesNothingFails();
    void bytesThatCannotBeReadAreNotReplaced();

private:
    static void addWays();
    /// A fresh folder that holds what `way` starts from.
    void prepare(const QByteArray& way);
    [[nodiscard]] WriteResult write(const QByteArray& way, FaultyCalls& calls) const;
    /// How many calls a write of this way makes when nothing is wrong.
    [[nodiscard]] int countCalls(const QByteArray& way);
    /// Starts the program anew: what was cut off is settled and swept.
    void restart() const;
    [[nodiscard]] bool holdsOldOrNew(const QByteArray& way) const;

    std::unique_ptr<Bucket> m_bucket;
    FileURL m_note;
    FileURL m_backups;
};

void FileWriteTests::init()
{
    prepare("replace");
}

void FileWriteTests::addWays()
{
    QTest::addColumn<QByteArray>("way");
    for (const char* way : {"replace", "over", "make", "in place", "in place, shorter", "create"})
        QTest::newRow(way) << QByteArray(way);
}

void FileWriteTests::prepare(const QByteArray& way)
{
    m_bucket = std::make_unique<Bucket>(
        std::initializer_list<std::pair<const char*, const char*>>{{"anteckningar/", ""}, {"länkar/", ""}});
    m_note = m_bucket->file(u"anteckningar/Möte.md"_s);
    m_backups = m_bucket->folder(u"state/interrupted"_s);
    if (way != "make" && way != "create")
        m_bucket->write(u"anteckningar/Möte.md"_s, oldText);
    if (way.startsWith("in place"))
        QCOMPARE(::link(m_note.bytes().constData(), m_bucket->file(u"länkar/Möte.md"_s).bytes().constData()),
                 0);
}

WriteResult FileWriteTests::write(const QByteArray& way, FaultyCalls& calls) const
{
    calls.largestWrite = pieceSize;
    const QByteArray bytes = way.endsWith("shorter") ? newText.first(2000) : newText;
    FileWrite write(calls, m_backups, m_note, bytes);
    if (way == "over")
        return write.writeOver(oldText);
    return way == "create" ? write.create() : write.write();
}

int FileWriteTests::countCalls(const QByteArray& way)
{
    prepare(way);
    FaultyCalls calls;
    if (!write(way, calls).succeeded())
        qFatal("the write fails without a fault");
    return int(calls.made.size());
}

void FileWriteTests::restart() const
{
    AtomicFile::setBackupDirectory(m_backups);
    RecoveredTexts recovered(m_bucket->folder(u"state/recovered"_s));
    (void)AtomicFile::settleInterruptedWrites(recovered);
    AtomicFile::sweepLeftovers(m_bucket->folder(u"anteckningar"_s));
    AtomicFile::recoverDisplaced(m_bucket->folder(u"anteckningar"_s), recovered, 0s);
}

bool FileWriteTests::holdsOldOrNew(const QByteArray& way) const
{
    const QByteArray bytes = m_bucket->read(u"anteckningar/Möte.md"_s);
    if (way == "make" || way == "create")
        return bytes == newText || !m_bucket->exists(u"anteckningar/Möte.md"_s);
    return bytes == oldText || bytes == (way.endsWith("shorter") ? newText.first(2000) : newText);
}

void FileWriteTests::aKillAtAnyCallLeavesOldOrNewBytes()
{
    QFETCH(QByteArray, way);
    const int callCount = countCalls(way);
    QVERIFY(callCount > 8);

    for (int last = 1; last <= callCount; ++last) {
        prepare(way);
        const ChildResult child = ChildProcess::run([&] {
            FaultyCalls calls;
            calls.interfere = [last](int number, const QByteArray&) {
                return number == last ? ::raise(SIGKILL) : 0;
            };
            return write(way, calls).error.toUtf8();
        });
        QVERIFY(!child.hasExited);
        for (const QString& name : m_bucket->names(u"anteckningar"_s))
            QVERIFY2(name == u"Möte.md" || name.startsWith(u'.'), qPrintable(name));
        if (!way.startsWith("in place"))
            QVERIFY(holdsOldOrNew(way));

        restart();

        QVERIFY2(holdsOldOrNew(way), qPrintable(u"killed at call %1"_s.arg(last)));
        QVERIFY(m_bucket->names(u"anteckningar"_s).size() <= 1);
        QVERIFY(m_bucket->names(u"state/interrupted"_s).size() <= 1); // the lock
    }
}

void FileWriteTests::anErrorAtAnyCallLeavesOldOrNewBytes()
{
    QFETCH(QByteArray, way);
    const int callCount = countCalls(way);

    for (int failing = 1; failing <= callCount; ++failing) {
        prepare(way);
        FaultyCalls calls;
        calls.interfere = [failing](int number, const QByteArray&) { return number == failing ? EIO : 0; };
        const WriteResult result = write(way, calls);

        const QByteArray call = calls.made.at(failing - 1);
        const QByteArray bytes = m_bucket->read(u"anteckningar/Möte.md"_s);
        QVERIFY2(holdsOldOrNew(way), call.constData());
        QVERIFY2(!result.succeeded() || (bytes != oldText && !bytes.isEmpty()), call.constData());
        QCOMPARE(result.error.isEmpty(), result.succeeded());
        restart();
        QVERIFY2(holdsOldOrNew(way), call.constData());
        QVERIFY(m_bucket->names(u"anteckningar"_s).size() <= 1);
    }
}

void FileWriteTests::aDiskThatFailsFromAnyCallOnLeavesOldOrNewBytes()
{
    QFETCH(QByteArray, way);
    const int callCount = countCalls(way);

    for (int first = 1; first < callCount; ++first) {
        prepare(way);
        FaultyCalls calls;
        calls.interfere = [first](int number, const QByteArray&) { return number >= first ? EIO : 0; };
        const WriteResult result = write(way, calls);
        if (!result.succeeded() && !holdsOldOrNew(way))
            QVERIFY2(result.error.contains(u"interrupted"), qPrintable(result.error));

        restart();

        QVERIFY2(holdsOldOrNew(way), qPrintable(u"failing from call %1"_s.arg(first)));
        QVERIFY(m_bucket->names(u"anteckningar"_s).size() <= 1);
    }
}

void FileWriteTests::interruptedCallsAreMadeAgain()
{
    QFETCH(QByteArray, way);
    prepare(way);
    FaultyCalls calls;
    calls.interfere = [](int number, const QByteArray&) { return number % 2 == 1 ? EINTR : 0; };

    QVERIFY(write(way, calls).succeeded());

    QVERIFY(holdsOldOrNew(way));
    QVERIFY(m_bucket->read(u"anteckningar/Möte.md"_s) != oldText);
}

void FileWriteTests::failingCallsFailTheWrite_data()
{
    QTest::addColumn<QByteArray>("failing");
    QTest::addColumn<int>("error");
    QTest::newRow("no room") << QByteArray("pwrite") << ENOSPC;
    QTest::newRow("quota used up") << QByteArray("pwrite") << EDQUOT;
    QTest::newRow("sync") << QByteArray("fsync") << EIO;
    QTest::newRow("close") << QByteArray("close") << EIO;
    QTest::newRow("rename") << QByteArray("renameat") << EIO;
    QTest::newRow("read-only disk") << QByteArray("openat") << EROFS;
}

void FileWriteTests::failingCallsFailTheWrite()
{
    QFETCH(QByteArray, failing);
    QFETCH(int, error);
    FaultyCalls calls;
    bool isTemporaryMade = false;
    calls.interfere = [&](int, const QByteArray& call) {
        // Folder and file are opened and closed before; the fault begins with the temporary file.
        isTemporaryMade = isTemporaryMade || call == "flock" || failing == "openat";
        return isTemporaryMade && call == failing ? error : 0;
    };

    const WriteResult result = write("replace", calls);

    QCOMPARE(result.outcome, WriteOutcome::Failed);
    QVERIFY2(result.error.contains(qt_error_string(error)), qPrintable(result.error));
    QVERIFY(result.error.contains(u"Möte.md"));
    QCOMPARE(m_bucket->read(u"anteckningar/Möte.md"_s), oldText);
    QCOMPARE(m_bucket->names(u"anteckningar"_s), QStringList(u"Möte.md"_s));
}

void FileWriteTests::aWriteThatTakesNothingFails()
{
    FaultyCalls calls;
    calls.largestWrite = 0;

    const WriteResult result = FileWrite(calls, m_backups, m_note, newText).write();

    QCOMPARE(result.outcome, WriteOutcome::Failed);
    QCOMPARE(m_bucket->read(u"anteckningar/Möte.md"_s), oldText);
}

void FileWriteTests::bytesThatCannotBeReadAreNotReplaced()
{
    const QByteArray sameSize(oldText.size(), 'x');
    FaultyCalls calls;
    calls.interfere = [](int, const QByteArray& call) { return call == "pread" ? EIO : 0; };

    QCOMPARE(FileWrite(calls, m_backups, m_note, sameSize).write().outcome, WriteOutcome::Failed);

    QCOMPARE(m_bucket->read(u"anteckningar/Möte.md"_s), oldText);
}

QTEST_APPLESS_MAIN(FileWriteTests)
#include "FileWriteTests.moc"
