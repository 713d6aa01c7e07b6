#include "Vault/FileSystemCalls.h"

#include "Fakes/Bucket.h"
#include "Fakes/FaultyCalls.h"

#include <QTest>

#include <fcntl.h>

using namespace wendlore;
using namespace Qt::StringLiterals;

class FileSystemCallsTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void interruptedCallsAreRepeated();
    void aRefusedCallDoesNothing();
    void errorsOfTheKernelArePassedOn();
    void aDescriptorIsClosedWithItsOwner();
    void aCloseThatFailsClosesAllTheSame();
    void exclusiveRenamingReplacesNothing();
    void reservingLeavesTheSize();

private:
    [[nodiscard]] static bool isOpen(int descriptor) { return ::fcntl(descriptor, F_GETFD) != -1; }
};

void FileSystemCallsTests::interruptedCallsAreRepeated()
{
    const Bucket bucket({{"A.md", "text"}});
    FaultyCalls calls;
    calls.interfere = [](int number, const QByteArray&) { return number < 3 ? EINTR : 0; };

    const Descriptor file(calls,
                          calls.openAt(AT_FDCWD, bucket.file(u"A.md"_s).bytes().constData(), O_RDONLY));

    QVERIFY(file.isOpen());
    QCOMPARE(calls.made, QByteArrayList({"openat", "openat", "openat"}));
}

void FileSystemCallsTests::aRefusedCallDoesNothing()
{
    const Bucket bucket({{"A.md", "text"}});
    FaultyCalls calls;
    calls.interfere = [](int, const QByteArray&) { return EROFS; };

    QCOMPARE(calls.remove(AT_FDCWD, bucket.file(u"A.md"_s).bytes().constData()), -1);

    QCOMPARE(errno, EROFS);
    QVERIFY(bucket.exists(u"A.md"_s));
}

void FileSystemCallsTests::errorsOfTheKernelArePassedOn()
{
    const Bucket bucket;

    QCOMPARE(FileSystemCalls::real().remove(AT_FDCWD, bucket.file(u"A.md"_s).bytes().constData()), -1);

    QCOMPARE(errno, ENOENT);
}

void FileSystemCallsTests::aDescriptorIsClosedWithItsOwner()
{
    FileSystemCalls& calls = FileSystemCalls::real();
    int first = -1;
    int second = -1;
    {
        Descriptor owner(calls, calls.openAt(AT_FDCWD, "/", O_RDONLY));
        first = owner.get();
        Descriptor next(std::move(owner));
        QVERIFY(!owner.isOpen());
        QCOMPARE(next.get(), first);
        next = Descriptor(calls, calls.openAt(AT_FDCWD, "/", O_RDONLY));
        second = next.get();
        QVERIFY(isOpen(second));
    }
    QVERIFY(!isOpen(first));
    QVERIFY(!isOpen(second));
}

void FileSystemCallsTests::aCloseThatFailsClosesAllTheSame()
{
    FaultyCalls calls;
    Descriptor file(calls, calls.openAt(AT_FDCWD, "/", O_RDONLY));
    const int descriptor = file.get();
    calls.interfere = [](int, const QByteArray&) { return EIO; };

    QCOMPARE(file.close(), -1);

    QCOMPARE(errno, EIO);
    QVERIFY(!isOpen(descriptor));
    QCOMPARE(file.close(), 0);
}

void FileSystemCallsTests::exclusiveRenamingReplacesNothing()
{
    const Bucket bucket({{"A.md", "a"}, {"B.md", "b"}});
    const QByteArray from = bucket.file(u"A.md"_s).bytes();
    const QByteArray to = bucket.file(u"B.md"_s).bytes();

    QCOMPARE(FileSystemCalls::real().renameExclusively(AT_FDCWD, from.constData(), AT_FDCWD, to.constData()),
             -1);

    QCOMPARE(errno, EEXIST);
    QCOMPARE(bucket.read(u"B.md"_s), "b");
}

void FileSystemCallsTests::reservingLeavesTheSize()
{
    const Bucket bucket({{"A.md", "text"}});
    FileSystemCalls& calls = FileSystemCalls::real();
    const Descriptor file(calls,
                          calls.openAt(AT_FDCWD, bucket.file(u"A.md"_s).bytes().constData(), O_WRONLY));

    // Not every file system can reserve; none may change the size.
    const bool isReserved = calls.reserve(file.get(), 100'000) == 0;
    QVERIFY(isReserved || errno == EOPNOTSUPP);
    QCOMPARE(bucket.read(u"A.md"_s), "text");
}

QTEST_APPLESS_MAIN(FileSystemCallsTests)
#include "FileSystemCallsTests.moc"
