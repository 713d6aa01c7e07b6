#include "Platform/CoordinatedReader.h"

#include "Fakes/Bucket.h"
#include "Fakes/ChildProcess.h"
#include "Fakes/FaultyCalls.h"

#include <QElapsedTimer>
#include <QTest>
#include <QThreadPool>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace wendlore;
using namespace Qt::StringLiterals;

class CoordinatedReaderTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFileIsReadWhole_data();
    void aFileIsReadWhole();
    void whatIsNoReadableFileGivesNothing();
    void aFileChangedDuringTheReadIsReadAgain_data();
    void aFileChangedDuringTheReadIsReadAgain();
    void aFileThatNeverRestsGivesNothing();
    void readsAreNeverTornWhileAnotherProcessRewrites();
    void onlyAFileWithoutItsBytesIsAskedFor();
};

void CoordinatedReaderTests::aFileIsReadWhole_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("text") << "Möte\r\n"_ba;
    QTest::newRow("empty") << ""_ba;
    QTest::newRow("not UTF-8") << "\xff\0\xfe"_ba;
    QTest::newRow("large") << QByteArray(20'000'000, 'x');
}

void CoordinatedReaderTests::aFileIsReadWhole()
{
    QFETCH(QByteArray, bytes);
    const Bucket bucket;
    bucket.write(u"A.md"_s, bytes);

    QCOMPARE(CoordinatedReader().readWhole(bucket.file(u"A.md"_s)), std::optional(bytes));
}

void CoordinatedReaderTests::whatIsNoReadableFileGivesNothing()
{
    const Bucket bucket({{"mapp/", ""}});
    QCOMPARE(::mkfifo(bucket.file(u"rör.md"_s).bytes().constData(), 0600), 0);
    CoordinatedReader reader;

    QCOMPARE(reader.readWhole(bucket.file(u"saknas.md"_s)), std::nullopt);
    QCOMPARE(reader.readWhole(bucket.file(u"mapp"_s)), std::nullopt);
    QCOMPARE(reader.readWhole(bucket.file(u"rör.md"_s)), std::nullopt);
    QCOMPARE(reader.readWhole(FileURL()), std::nullopt);
}

void CoordinatedReaderTests::aFileChangedDuringTheReadIsReadAgain_data()
{
    QTest::addColumn<QByteArray>("changed");
    QTest::newRow("same size") << "ny text"_ba;
    QTest::newRow("longer") << "en längre text"_ba;
    QTest::newRow("shorter") << "ny"_ba;
}

void CoordinatedReaderTests::aFileChangedDuringTheReadIsReadAgain()
{
    QFETCH(QByteArray, changed);
    const Bucket bucket({{"A.md", "gammalt"}});
    FaultyCalls calls;
    CoordinatedReader reader(calls);
    QVERIFY(reader.readWhole(bucket.file(u"A.md"_s)).has_value());
    calls.made.clear();
    calls.interfere = [&](int, const QByteArray& call) {
        if (call == "pread" && calls.made.count("pread") == 1)
            bucket.write(u"A.md"_s, changed);
        return 0;
    };

    QCOMPARE(reader.readWhole(bucket.file(u"A.md"_s)), std::optional(changed));
}

void CoordinatedReaderTests::aFileThatNeverRestsGivesNothing()
{
    const Bucket bucket({{"A.md", "text"}});
    FaultyCalls calls;
    calls.interfere = [&](int number, const QByteArray& call) {
        if (call == "pread")
            bucket.write(u"A.md"_s, QByteArray::number(number));
        return 0;
    };
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"A\\.md.*keeps changing"_s));

    QCOMPARE(CoordinatedReader(calls).readWhole(bucket.file(u"A.md"_s)), std::nullopt);
}

void CoordinatedReaderTests::readsAreNeverTornWhileAnotherProcessRewrites()
{
    constexpr int size = 400'000;
    const Bucket bucket;
    const FileURL note = bucket.file(u"A.md"_s);
    bucket.write(u"A.md"_s, QByteArray(size, 'x'));

    // A writer that the system lets rest in the middle, longer than it takes to see that a file has settled,
    // cannot be told from one that is done. It tells how often it rested.
    ChildProcess writer([&] {
        const int file = ::open(note.bytes().constData(), O_WRONLY);
        int rests = 0;
        for (int round = 0; round < 400; ++round) {
            const QByteArray piece(size / 8, char('a' + round % 26));
            QElapsedTimer sinceWrite;
            sinceWrite.start();
            for (int part = 0; part < 8; ++part) {
                if (::pwrite(file, piece.constData(), size_t(piece.size()), part * piece.size()) < 0)
                    return "failed"_ba;
                rests += sinceWrite.restart() > 8 ? 1 : 0;
            }
        }
        return QByteArray::number(rests);
    });
    CoordinatedReader reader;
    int torn = 0;
    do {
        const auto bytes = reader.readWhole(note);
        torn += bytes && bytes->count(bytes->front()) != size ? 1 : 0;
    } while (writer.isRunning());

    const ChildResult written = writer.finish();
    QVERIFY(written.hasExited && written.said != "failed");
    QVERIFY2(torn == 0 || written.said != "0", qPrintable(QString::number(torn)));
    QCOMPARE(reader.readWhole(note), std::optional(QByteArray(size, char('a' + 399 % 26))));
}

void CoordinatedReaderTests::onlyAFileWithoutItsBytesIsAskedFor()
{
    const Bucket bucket({{"Här.md", "text"}, {"Tom.md", ""}});
    const FileURL placeholder = bucket.file(u"Molnet.md"_s);
    bucket.write(u"Molnet.md"_s, {});
    QCOMPARE(::truncate(placeholder.bytes().constData(), 5000), 0);
    FaultyCalls calls;
    CoordinatedReader reader(calls);

    reader.startDownloading(bucket.file(u"Här.md"_s));
    reader.startDownloading(bucket.file(u"Tom.md"_s));
    reader.startDownloading(bucket.file(u"saknas.md"_s));
    QThreadPool::globalInstance()->waitForDone();
    QVERIFY(!calls.made.contains("pread"));

    reader.startDownloading(placeholder);
    QThreadPool::globalInstance()->waitForDone();
    QCOMPARE(calls.made.count("pread"), 1);
}

QTEST_GUILESS_MAIN(CoordinatedReaderTests)
#include "CoordinatedReaderTests.moc"
