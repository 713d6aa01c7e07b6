#include "Vault/InterruptedWrites.h"

#include "Fakes/Bucket.h"
#include "Fakes/FaultyCalls.h"
#include "Vault/RecoveredTexts.h"

#include <QTest>

#include <algorithm>

using namespace wendlore;
using namespace Qt::StringLiterals;

class InterruptedWritesTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aMixtureBecomesTheNewBytes_data();
    void aMixtureBecomesTheNewBytes();
    void aFileChangedSinceStaysAndBothTextsAreKept_data();
    void aFileChangedSinceStaysAndBothTextsAreKept();
    void aFileThatIsGoneStaysGoneAndBothTextsAreKept();
    void aFinishedWriteOnlyLosesItsBackup();
    void theBackupOfALivingWriteIsLeftAlone();
    void aBackupWhoseTextsCannotBeKeptStays();
    void aBrokenBackupIsLeftAndLogged();
    void withoutBackupsNothingIsMade();

private:
    /// Starts anew where a write of "new" over "old" was cut off and left `found`.
    int settleAfter(const QByteArray& before, const QByteArray& after, const QByteArray& found);
    int settle();
    [[nodiscard]] FileURL keep(const QByteArray& before, const QByteArray& after);
    [[nodiscard]] QByteArray note() const { return m_bucket->read(u"A.md"_s); }
    [[nodiscard]] QByteArrayList recoveredTexts() const;
    [[nodiscard]] QStringList backups() const
    {
        return m_bucket->names(u"state/interrupted"_s).filter(u".backup"_s);
    }

    std::unique_ptr<Bucket> m_bucket;
    std::unique_ptr<InterruptedWrites> m_writes;
};

void InterruptedWritesTests::init()
{
    m_bucket = std::make_unique<Bucket>();
    m_writes = std::make_unique<InterruptedWrites>(FileSystemCalls::real(),
                                                   m_bucket->folder(u"state/interrupted"_s));
}

FileURL InterruptedWritesTests::keep(const QByteArray& before, const QByteArray& after)
{
    const Descriptor lock = m_writes->lock();
    return m_writes->keep({m_bucket->file(u"A.md"_s), before, after}).record;
}

int InterruptedWritesTests::settle()
{
    RecoveredTexts recovered(m_bucket->folder(u"state/recovered"_s));
    return m_writes->settle(recovered);
}

int InterruptedWritesTests::settleAfter(const QByteArray& before, const QByteArray& after,
                                        const QByteArray& found)
{
    (void)keep(before, after);
    m_bucket->write(u"A.md"_s, found);
    return settle();
}

QByteArrayList InterruptedWritesTests::recoveredTexts() const
{
    QByteArrayList texts;
    for (const QString& name : m_bucket->names(u"state/recovered"_s))
        texts.append(m_bucket->read(u"state/recovered/"_s + name));
    std::ranges::sort(texts);
    return texts;
}

void InterruptedWritesTests::aMixtureBecomesTheNewBytes_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<QByteArray>("found");
    QTest::newRow("nothing written yet") << "gammal"_ba
                                         << "ny text"_ba
                                         << "gammal"_ba;
    QTest::newRow("the start written") << "gammal"_ba
                                       << "ny text"_ba
                                       << "ny mal"_ba;
    QTest::newRow("the end written") << "gammal"_ba
                                     << "ny text"_ba
                                     << "gammaxt"_ba;
    QTest::newRow("longer, end missing") << "gammal"_ba
                                         << "en ny text"_ba
                                         << "en ny \0\0\0"_ba;
    QTest::newRow("shorter, not cut yet") << "gammal"_ba
                                          << "ny"_ba
                                          << "nymmal"_ba;
    QTest::newRow("was empty") << ""_ba
                               << "ny"_ba
                               << ""_ba;
    QTest::newRow("becomes empty") << "gammal"_ba
                                   << ""_ba
                                   << "gammal"_ba;
}

void InterruptedWritesTests::aMixtureBecomesTheNewBytes()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    QFETCH(QByteArray, found);

    QCOMPARE(settleAfter(before, after, found), 1);

    QCOMPARE(note(), after);
    QCOMPARE(recoveredTexts(), QByteArrayList());
    QCOMPARE(backups(), QStringList());
    QCOMPARE(settle(), 0);
}

void InterruptedWritesTests::aFileChangedSinceStaysAndBothTextsAreKept_data()
{
    QTest::addColumn<QByteArray>("found");
    QTest::newRow("other bytes") << "annan."_ba;
    QTest::newRow("longer than both") << "gammal text"_ba;
    QTest::newRow("shorter than both") << "ny"_ba;
}

void InterruptedWritesTests::aFileChangedSinceStaysAndBothTextsAreKept()
{
    QFETCH(QByteArray, found);

    QCOMPARE(settleAfter("gammal", "ny text", found), 1);

    QCOMPARE(note(), found);
    QCOMPARE(recoveredTexts(), QByteArrayList({"gammal", "ny text"}));
    QCOMPARE(backups(), QStringList());
}

void InterruptedWritesTests::aFileThatIsGoneStaysGoneAndBothTextsAreKept()
{
    (void)keep("gammal", "ny text");

    QCOMPARE(settle(), 1);

    QVERIFY(!m_bucket->exists(u"A.md"_s));
    QCOMPARE(recoveredTexts(), QByteArrayList({"gammal", "ny text"}));
}

void InterruptedWritesTests::aFinishedWriteOnlyLosesItsBackup()
{
    QCOMPARE(settleAfter("gammal", "ny text", "ny text"), 1);

    QCOMPARE(note(), "ny text");
    QCOMPARE(recoveredTexts(), QByteArrayList());
    QCOMPARE(backups(), QStringList());
}

void InterruptedWritesTests::theBackupOfALivingWriteIsLeftAlone()
{
    const FileURL record = keep("gammal", "ny text");
    m_bucket->write(u"A.md"_s, "ny mal");
    FaultyCalls calls;
    calls.interfere = [&](int, const QByteArray& call) {
        // Whoever held the lock until now goes on to other bytes before letting it go.
        if (call == "flock") {
            m_bucket->write(u"A.md"_s, "nyare");
            QFile::remove(record.path());
        }
        return 0;
    };
    RecoveredTexts recovered(m_bucket->folder(u"state/recovered"_s));

    QCOMPARE(InterruptedWrites(calls, m_bucket->folder(u"state/interrupted"_s)).settle(recovered), 0);

    QCOMPARE(note(), "nyare");
    QCOMPARE(recoveredTexts(), QByteArrayList());
}

void InterruptedWritesTests::aBackupWhoseTextsCannotBeKeptStays()
{
    m_bucket->write(u"state/recovered"_s, "i vägen");

    QCOMPARE(settleAfter("gammal", "ny text", "annan."), 1);
    QCOMPARE(backups().size(), 1);
    m_bucket->remove(u"state/recovered"_s);

    QCOMPARE(settle(), 1);
    QCOMPARE(recoveredTexts(), QByteArrayList({"gammal", "ny text"}));
    QCOMPARE(backups(), QStringList());
}

void InterruptedWritesTests::aBrokenBackupIsLeftAndLogged()
{
    m_bucket->write(u"state/interrupted/x.backup"_s, "inte en kopia");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot read the backup"_s));

    settle();

    QCOMPARE(backups(), QStringList(u"x.backup"_s));
}

void InterruptedWritesTests::withoutBackupsNothingIsMade()
{
    QCOMPARE(settle(), 0);

    QVERIFY(!m_bucket->exists(u"state"_s));
}

QTEST_APPLESS_MAIN(InterruptedWritesTests)
#include "InterruptedWritesTests.moc"
