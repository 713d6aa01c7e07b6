#include "Vault/ReadFile.h"

#include "Fakes/Bucket.h"
#include "Fakes/FaultyCalls.h"
#include "Vault/AtomicFile.h"

#include <QTest>

#include <sys/stat.h>

using namespace wendlore;
using namespace Qt::StringLiterals;

class ReadFileTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void allBytesAreGiven();
    void anEmptyFileIsNotAMissingOne();
    void namesThatAreNotUtf8AreRead();
    void whatIsNoOrdinaryFileIsNotRead();
    void aReadThatFailsGivesNothing();
};

void ReadFileTests::allBytesAreGiven()
{
    const Bucket bucket;
    bucket.write(u"Å.md"_s, "\xff\0\r\n"_ba);

    QCOMPARE(readFile(bucket.file(u"Å.md"_s)), std::optional("\xff\0\r\n"_ba));
}

void ReadFileTests::anEmptyFileIsNotAMissingOne()
{
    const Bucket bucket({{"Tom.md", ""}, {"mapp/", ""}});

    QCOMPARE(readFile(bucket.file(u"Tom.md"_s)), std::optional(QByteArray("")));
    QCOMPARE(readFile(bucket.file(u"saknas.md"_s)), std::nullopt);
    QCOMPARE(readFile(bucket.folder(u"mapp"_s)), std::nullopt);
}

void ReadFileTests::namesThatAreNotUtf8AreRead()
{
    const Bucket bucket;
    const FileURL file = bucket.root().appendingBytes("M\xf6te.md", false);
    QVERIFY(AtomicFile::write(file, "text").succeeded());

    QCOMPARE(readFile(file), std::optional("text"_ba));
}

void ReadFileTests::whatIsNoOrdinaryFileIsNotRead()
{
    const Bucket bucket;
    QCOMPARE(::mkfifo(bucket.file(u"rör.md"_s).bytes().constData(), 0600), 0);

    QCOMPARE(readFile(bucket.file(u"rör.md"_s)), std::nullopt);
    QCOMPARE(readFile(bucket.file(u"A\0B"_s)), std::nullopt);
}

void ReadFileTests::aReadThatFailsGivesNothing()
{
    const Bucket bucket({{"A.md", "text"}});
    FaultyCalls calls;
    calls.interfere = [](int, const QByteArray& call) { return call == "pread" ? EIO : 0; };

    QCOMPARE(readFile(bucket.file(u"A.md"_s), calls), std::nullopt);
}

QTEST_APPLESS_MAIN(ReadFileTests)
#include "ReadFileTests.moc"
