#include "Editor/NoteSaver.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeDesktop.h"
#include "Fakes/FaultyCalls.h"
#include "Vault/AtomicFile.h"
#include "Vault/RecoveredTexts.h"

#include <QTest>

#include <barrier>
#include <thread>
#include <unistd.h>

namespace wendlore {

using namespace Qt::StringLiterals;

namespace {

const QDateTime now(QDate(2025, 3, 14), QTime(9, 32));
const QString copyName = u"Möte (konflikt Annas dator 2025-03-14 0932).md"_s;

/// Takes root's rights away for a while, so that permissions mean something.
class OrdinaryUser final
{
public:
    OrdinaryUser()
        : m_user(::geteuid())
    {
        if (m_user == 0 && ::seteuid(65534) != 0)
            qFatal("cannot become an ordinary user");
    }
    ~OrdinaryUser()
    {
        if (::seteuid(m_user) != 0)
            qFatal("cannot become the user again");
    }
    Q_DISABLE_COPY_MOVE(OrdinaryUser)

private:
    uid_t m_user;
};

/// A note on the real disk, with somebody else's `bytes` in it.
struct Fixture final
{
    explicit Fixture(const QByteArray& bytes) { bucket.write(u"Möte.md"_s, bytes); }

    [[nodiscard]] NoteSaver::Result save(const QString& baseline, const QString& markdown)
    {
        return NoteSaver(
                   coordinator, recovered, workspace, [] { return now; }, calls)
            .save(note, baseline, markdown);
    }
    [[nodiscard]] NoteSaver::Result saveAsOrdinaryUser(const QString& baseline, const QString& markdown)
    {
        const OrdinaryUser user;
        return save(baseline, markdown);
    }
    /// Lets something happen between our last look at the note and the moment when our text takes its place.
    void atExchange(std::function<void()> happen)
    {
        calls.interfere = [happen = std::move(happen)](int, const QByteArray& call) {
            if (call == "exchange")
                happen();
            return 0;
        };
    }
    /// Puts a file where the folder of the recovered texts would have to be made.
    void blockRecoveredTexts() const
    {
        QVERIFY(QFile(recovered.directory().path()).open(QIODevice::WriteOnly));
    }
    /// The note can be written, but nothing can be made beside it.
    void forbidNewFiles() const
    {
        QFile::setPermissions(note.path(), QFile::Permissions(0x6666));
        QFile::setPermissions(bucket.root().path(), QFile::Permissions(0x5555));
        QFile::setPermissions(stateFolder.path(), QFile::Permissions(0x7777));
        AtomicFile::setBackupDirectory(FileURL::directory(stateFolder.filePath(u"backups"_s)));
    }
    [[nodiscard]] QByteArray recoveredBytes() const
    {
        const QStringList names = QDir(recovered.directory().path()).entryList(QDir::Files);
        QFile file(recovered.directory().appending(names.value(0)).path());
        return names.size() == 1 && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    Bucket bucket;
    QTemporaryDir stateFolder;
    FakeFileCoordinator coordinator;
    FakeWorkspace workspace;
    FaultyCalls calls;
    RecoveredTexts recovered{FileURL::directory(stateFolder.filePath(u"recovered"_s))};
    FileURL note = bucket.file(u"Möte.md"_s);
};

} // namespace

class NoteSaverTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void savesWithoutConflict_data();
    void savesWithoutConflict();
    void aNoteThatIsGoneIsMadeAgain();
    void anotherVersionGoesToAConflictCopy();
    void aVersionThatArrivesDuringTheSaveIsKeptToo_data();
    void aVersionThatArrivesDuringTheSaveIsKeptToo();
    void aVersionThatComesWithTheReplacementIsKeptToo();
    void whatComesWithTheReplacementButIsKnownIsNoConflict();
    void aFileThatComesWithTheReplacementAndCannotBeReadIsKeptToo();
    void aNoteThatAppearsDuringTheSaveIsKeptToo();
    void whatAppearsBehindALinkToNothingIsKeptToo();
    void aNoteThatNeverRestsIsLeftForLater();
    void aConflictIsLoggedWithTheNumbersOfCharacters();
    void bytesThatAreNotUtf8AreKept();
    void bytesThatAreNotUtf8BecomeACopyWhenTheyCannotBeKept();
    void anUnreadableNoteIsMovedAside();
    void aCopyThatCannotBeWrittenIsKept();
    void nothingIsWrittenOverWhatCanBeKeptNowhere();
    void aTextThatCannotBeWrittenIsKept();
    void aTextThatFitsNowhereIsReported();
};

void NoteSaverTests::savesWithoutConflict_data()
{
    QTest::addColumn<QByteArray>("disk");
    QTest::addColumn<QString>("baseline");

    QTest::newRow("nobody else wrote") << QByteArray("gammalt") << u"gammalt"_s;
    QTest::newRow("the disk is empty") << QByteArray() << u"gammalt"_s;
    QTest::newRow("the other side has our text") << QByteArray("nytt") << u"gammalt"_s;
}

void NoteSaverTests::savesWithoutConflict()
{
    QFETCH(const QByteArray, disk);
    QFETCH(const QString, baseline);
    Fixture f(disk);

    const auto result = f.save(baseline, u"nytt"_s);

    QVERIFY(result.isKept);
    QVERIFY(result.conflictCopy.isEmpty());
    QCOMPARE(f.bucket.read(u"Möte.md"_s), "nytt");
    QCOMPARE(f.bucket.names(), QStringList{u"Möte.md"_s});
}

void NoteSaverTests::aNoteThatIsGoneIsMadeAgain()
{
    Fixture f("gammalt");
    f.bucket.remove(u"Möte.md"_s);

    QVERIFY(f.save(u"gammalt"_s, u"nytt"_s).isKept);

    QCOMPARE(f.bucket.read(u"Möte.md"_s), "nytt");
}

void NoteSaverTests::anotherVersionGoesToAConflictCopy()
{
    Fixture f("\xEF\xBB\xBF"
              "deras\r\n");

    const auto result = f.save(u"gammalt"_s, u"vårt"_s);

    QVERIFY(result.isKept);
    QCOMPARE(result.conflictCopy, f.bucket.file(copyName));
    QCOMPARE(f.bucket.read(copyName), "\xEF\xBB\xBF"
                                      "deras\r\n");
    QCOMPARE(f.bucket.read(u"Möte.md"_s), "vårt");
}

void NoteSaverTests::aVersionThatArrivesDuringTheSaveIsKeptToo_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QStringList>("names");
    const QString secondName = u"Möte (konflikt Annas dator 2025-03-14 0932 2).md"_s;
    QTest::newRow("ours before") << QByteArray("gammalt") << QStringList{copyName, u"Möte.md"_s};
    QTest::newRow("a conflict before")
        << QByteArray("deras första") << QStringList{secondName, copyName, u"Möte.md"_s};
}

void NoteSaverTests::aVersionThatArrivesDuringTheSaveIsKeptToo()
{
    QFETCH(const QByteArray, before);
    QFETCH(const QStringList, names);
    Fixture f(before);
    f.coordinator.afterNextRead = [&f] { f.bucket.write(u"Möte.md"_s, "deras sista"); };

    const auto result = f.save(u"gammalt"_s, u"vårt"_s);

    QVERIFY(result.isKept);
    QCOMPARE(f.bucket.names(), names);
    QCOMPARE(result.conflictCopy, f.bucket.file(names.first()));
    QCOMPARE(f.bucket.read(names.first()), "deras sista");
    QCOMPARE(f.bucket.read(u"Möte.md"_s), "vårt");
}

void NoteSaverTests::aVersionThatComesWithTheReplacementIsKeptToo()
{
    Fixture f("gammalt");
    f.atExchange([&f] { f.bucket.write(u"Möte.md"_s, "deras sista"); });

    const auto result = f.save(u"gammalt"_s, u"vårt"_s);

    QVERIFY(result.isKept);
    QCOMPARE(f.bucket.names(), QStringList({copyName, u"Möte.md"_s}));
    QCOMPARE(result.conflictCopy, f.bucket.file(copyName));
    QCOMPARE(f.bucket.read(copyName), "deras sista");
    QCOMPARE(f.bucket.read(u"Möte.md"_s), "vårt");
}

void NoteSaverTests::whatComesWithTheReplacementButIsKnownIsNoConflict()
{
    Fixture f("gammalt");
    f.atExchange([&f] { f.bucket.write(u"Möte.md"_s, "vårt"); });

    const auto result = f.save(u"gammalt"_s, u"vårt"_s);

    QVERIFY(result.isKept);
    QVERIFY(result.conflictCopy.isEmpty());
    QCOMPARE(f.bucket.names(), QStringList(u"Möte.md"_s));
}

void NoteSaverTests::aFileThatComesWithTheReplacementAndCannotBeReadIsKeptToo()
{
    Fixture f("gammalt");
    f.atExchange([&f] {
        f.bucket.remove(u"Möte.md"_s);
        QCOMPARE(::symlink("annan fil", f.note.bytes().constData()), 0);
    });

    const auto result = f.save(u"gammalt"_s, u"vårt"_s);

    QVERIFY(result.isKept);
    QCOMPARE(QFile::symLinkTarget(f.bucket.file(copyName).path()), f.bucket.file(u"annan fil"_s).path());
    QCOMPARE(f.bucket.read(u"Möte.md"_s), "vårt");
}

void NoteSaverTests::aNoteThatAppearsDuringTheSaveIsKeptToo()
{
    for (int round = 0; round < 100; ++round) {
        Fixture f({});
        QVERIFY(QFile::remove(f.note.path()));
        std::barrier start(2);
        WriteResult appeared;
        std::thread other([&] {
            start.arrive_and_wait();
            appeared = AtomicFile::create(f.note, "deras");
        });
        start.arrive_and_wait();

        const auto result = f.save(u"gammalt"_s, u"vårt"_s);
        other.join();

        QVERIFY(result.isKept);
        QCOMPARE(f.bucket.read(u"Möte.md"_s), "vårt");
        QCOMPARE(f.bucket.exists(copyName), appeared.succeeded());
        if (appeared.succeeded())
            QCOMPARE(f.bucket.read(copyName), "deras");
    }
}

void NoteSaverTests::whatAppearsBehindALinkToNothingIsKeptToo()
{
    Fixture f({});
    f.bucket.remove(u"Möte.md"_s);
    QCOMPARE(::symlink("Mål.md", f.note.bytes().constData()), 0);
    f.calls.interfere = [&f](int, const QByteArray& call) {
        if (call == "renameat2" && !f.bucket.exists(u"Mål.md"_s))
            f.bucket.write(u"Mål.md"_s, "deras");
        return 0;
    };

    const auto result = f.save(u"gammalt"_s, u"vårt"_s);

    QVERIFY(result.isKept);
    QCOMPARE(f.bucket.read(u"Mål.md"_s), "vårt");
    QCOMPARE(f.bucket.read(copyName), "deras");
}

void NoteSaverTests::aNoteThatNeverRestsIsLeftForLater()
{
    Fixture f("gammalt");
    int version = 0;
    std::function<void()> change = [&] {
        f.bucket.write(u"Möte.md"_s, "version " + QByteArray::number(++version));
        f.coordinator.afterNextRead = change;
    };
    f.coordinator.afterNextRead = change;

    const auto result = f.save(u"gammalt"_s, u"vårt"_s);

    QVERIFY(!result.isKept);
    QVERIFY(!result.conflictCopy.isEmpty());
    QCOMPARE(f.bucket.read(u"Möte.md"_s), "version " + QByteArray::number(version));
}

void NoteSaverTests::aConflictIsLoggedWithTheNumbersOfCharacters()
{
    Fixture f("a\xCC\x8A\r\n");
    QTest::ignoreMessage(QtWarningMsg, "[SYNC] konflikt Möte.md baselineLen=3 diskLen=2 mdLen=1");

    QVERIFY(f.save(u"abc"_s, u"👍🏽"_s).isKept);
}

void NoteSaverTests::bytesThatAreNotUtf8AreKept()
{
    Fixture f("M\xF6te");

    const auto result = f.save({}, u"nytt"_s);

    QVERIFY(result.conflictCopy.isEmpty());
    QCOMPARE(f.bucket.read(u"Möte.md"_s), "nytt");
    QCOMPARE(f.recoveredBytes(), "M\xF6te");
}

void NoteSaverTests::bytesThatAreNotUtf8BecomeACopyWhenTheyCannotBeKept()
{
    Fixture f("M\xF6te");
    f.blockRecoveredTexts();

    const auto result = f.save({}, u"nytt"_s);

    QCOMPARE(result.conflictCopy, f.bucket.file(copyName));
    QCOMPARE(f.bucket.read(copyName), "M\xF6te");
    QCOMPARE(f.bucket.read(u"Möte.md"_s), "nytt");
}

void NoteSaverTests::anUnreadableNoteIsMovedAside()
{
    Fixture f("hemligt");
    QFile::setPermissions(f.bucket.root().path(), QFile::Permissions(0x7777));
    QFile::setPermissions(f.note.path(), {});

    const auto result = f.saveAsOrdinaryUser(u"gammalt"_s, u"nytt"_s);

    QCOMPARE(result.conflictCopy, f.bucket.file(copyName));
    QVERIFY(QFile::setPermissions(f.bucket.file(copyName).path(), QFile::ReadOwner));
    QCOMPARE(f.bucket.read(copyName), "hemligt");
    QCOMPARE(f.bucket.read(u"Möte.md"_s), "nytt");
}

void NoteSaverTests::aCopyThatCannotBeWrittenIsKept()
{
    Fixture f("deras");
    f.forbidNewFiles();

    const auto result = f.saveAsOrdinaryUser(u"gammalt"_s, u"vårt"_s);

    QVERIFY(result.isKept);
    QVERIFY(result.conflictCopy.isEmpty());
    QCOMPARE(f.recoveredBytes(), "deras");
    QCOMPARE(f.bucket.read(u"Möte.md"_s), "vårt");
}

void NoteSaverTests::nothingIsWrittenOverWhatCanBeKeptNowhere()
{
    Fixture f("deras");
    f.forbidNewFiles();
    f.blockRecoveredTexts();

    const auto result = f.saveAsOrdinaryUser(u"gammalt"_s, u"vårt"_s);

    QVERIFY(!result.isKept);
    QCOMPARE(f.bucket.read(u"Möte.md"_s), "deras");
}

void NoteSaverTests::aTextThatCannotBeWrittenIsKept()
{
    Fixture f({});
    f.note = f.bucket.file(u"Borta/Möte.md"_s);

    const auto result = f.save(u"gammalt"_s, u"nytt"_s);

    QVERIFY(result.isKept);
    QCOMPARE(f.recoveredBytes(), "nytt");
}

void NoteSaverTests::aTextThatFitsNowhereIsReported()
{
    Fixture f({});
    f.note = f.bucket.file(u"Borta/Möte.md"_s);
    f.blockRecoveredTexts();

    QVERIFY(!f.save(u"gammalt"_s, u"nytt"_s).isKept);
}

} // namespace wendlore

QTEST_APPLESS_MAIN(wendlore::NoteSaverTests)
#include "NoteSaverTests.moc"
