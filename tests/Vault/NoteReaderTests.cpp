#include "Vault/NoteReader.h"

#include "Fakes/Bucket.h"

#include "Vault/ByteScanner.h"

#include <QFile>
#include <QMap>
#include <QScopeGuard>
#include <QTest>

#include <algorithm>
#include <span>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace wendlore;
using namespace Qt::StringLiterals;

namespace {

/// What was read of the bucket's entries, by their names.
QMap<QByteArray, QByteArray> read(NoteReader& reader, const FolderListing& listing)
{
    QMap<QByteArray, QByteArray> texts;
    reader.read(listing.descriptor(), listing.entries(), [&](std::size_t index, std::string_view bytes) {
        texts[QByteArray(listing.entries()[index].name.data())] =
            QByteArray(bytes.data(), qsizetype(bytes.size()));
    });
    return texts;
}

QMap<QByteArray, QByteArray> read(NoteReader& reader, const Bucket& bucket)
{
    return read(reader, FolderListing(bucket.root(), FollowLink::No));
}

} // namespace

class NoteReaderTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsEveryFileOfAList();
    void passesOverWhatIsNoFile();
    void passesOverWhatHasTakenAFilesPlace();
    void filesThatTheSystemHasForgottenAreReadFromTheDisk();
    void filesOfWholePagesAreReadWhole();
    void aFileSystemThatGivesAnyPieceIsReadToTheEnd();
    void bytesBehindTheTextAreReadable();
    void aLargeFileBetweenSmallOnesIsReadWhole();
    void onlyItsOwnFilesAreClosed();
    void readingLeavesNoTrace();
    void filesOfOtherUsersAreReadToo();
};

void NoteReaderTests::readsEveryFileOfAList()
{
    const Bucket bucket;
    for (int i = 0; i < 200; ++i)
        bucket.write(QString::number(i), QByteArray::number(i * i));
    NoteReader reader;

    const auto texts = read(reader, bucket);

    QCOMPARE(texts.size(), 200);
    for (int i = 0; i < 200; ++i)
        QCOMPARE(texts[QByteArray::number(i)], QByteArray::number(i * i));
}

void NoteReaderTests::passesOverWhatIsNoFile()
{
    const Bucket bucket({{"A", "a"}, {"mapp/", ""}, {"tom", ""}, {"borta", "b"}});
    QCOMPARE(::mkfifo(bucket.file(u"rör"_s).bytes().constData(), 0600), 0);
    const FolderListing listing(bucket.root(), FollowLink::No);
    bucket.remove(u"borta"_s);
    NoteReader reader;

    const auto texts = read(reader, listing);

    QCOMPARE(texts, (QMap<QByteArray, QByteArray>{{"A", "a"}, {"tom", ""}}));
}

void NoteReaderTests::passesOverWhatHasTakenAFilesPlace()
{
    const Bucket bucket({{"A", "a"}, {"B", "b"}, {"C", "c"}, {"D", "d"}});
    const FolderListing listing(bucket.root(), FollowLink::No);
    const auto replace = [&](const QString& name, const QByteArray& target) {
        bucket.remove(name);
        return ::symlink(target.constData(), bucket.file(name).bytes().constData()) == 0;
    };
    QVERIFY(replace(u"B"_s, "/dev/zero"));
    QVERIFY(replace(u"C"_s, "/"));
    bucket.remove(u"D"_s);
    QCOMPARE(::mkfifo(bucket.file(u"D"_s).bytes().constData(), 0600), 0);
    NoteReader reader;

    const auto texts = read(reader, listing);

    QCOMPARE(texts.value("A"), QByteArray("a"));
    QVERIFY(!texts.contains("B") && !texts.contains("C"));
    QVERIFY(texts.value("D").isEmpty());
}

void NoteReaderTests::filesThatTheSystemHasForgottenAreReadFromTheDisk()
{
    const Bucket bucket;
    for (int i = 0; i < 100; ++i) {
        bucket.write(QString::number(i), QByteArray(10'000, 'x') + QByteArray::number(i));
        const int file = ::open(bucket.file(QString::number(i)).bytes().constData(), O_RDONLY);
        QCOMPARE(::fsync(file), 0);
        // All of it, its beginning or its end.
        QCOMPARE(::posix_fadvise(file, i % 3 == 1 ? 4096 : 0, i % 3 == 0 ? 4096 : 0, POSIX_FADV_DONTNEED), 0);
        ::close(file);
    }
    NoteReader reader;

    const auto texts = read(reader, bucket);

    QCOMPARE(texts.size(), 100);
    for (int i = 0; i < 100; ++i)
        QCOMPARE(texts[QByteArray::number(i)], QByteArray(10'000, 'x') + QByteArray::number(i));
}

void NoteReaderTests::filesOfWholePagesAreReadWhole()
{
    const Bucket bucket;
    for (int size : {4095, 4096, 4097, 8192, 256 * 1024 - 1, 256 * 1024, 256 * 1024 + 1})
        bucket.write(QString::number(size), QByteArray(size, 'x'));
    NoteReader reader;

    const auto texts = read(reader, bucket);

    QCOMPARE(texts.size(), 7);
    for (const auto& [name, text] : texts.asKeyValueRange())
        QCOMPARE(text.size(), name.toInt());
}

void NoteReaderTests::aFileSystemThatGivesAnyPieceIsReadToTheEnd()
{
    // The kernel's own files come a piece at a time, whatever is asked for.
    const FolderListing listing(FileURL::fromBytes("/proc", true), FollowLink::No);
    const auto file = std::ranges::find(listing.entries(), "kallsyms", &FolderListing::Entry::name);
    QVERIFY(file != listing.entries().end());
    QFile whole(u"/proc/kallsyms"_s);
    QVERIFY(whole.open(QIODevice::ReadOnly));
    const QByteArray expected = whole.readAll();
    NoteReader reader;
    QByteArray text;

    reader.read(listing.descriptor(), std::span(&*file, 1), [&](std::size_t, std::string_view bytes) {
        text = QByteArray(bytes.data(), qsizetype(bytes.size()));
    });

    QVERIFY(expected.size() > 4096);
    QCOMPARE(text.size(), expected.size());
}

void NoteReaderTests::bytesBehindTheTextAreReadable()
{
    const Bucket bucket({{"A", "lång text"}, {"B", "b"}});
    const FolderListing listing(bucket.root(), FollowLink::No);
    NoteReader reader;

    reader.read(listing.descriptor(), listing.entries(), [](std::size_t, std::string_view bytes) {
        for (std::size_t behind = 0; behind < ByteScanner::padding; ++behind)
            QCOMPARE(*(bytes.data() + bytes.size() + behind), '\0');
    });
}

void NoteReaderTests::aLargeFileBetweenSmallOnesIsReadWhole()
{
    const Bucket bucket({{"A", "a"}, {"C", "c"}});
    const QByteArray large(5'000'001, 'b');
    bucket.write(u"B"_s, large);
    NoteReader reader;

    const auto texts = read(reader, bucket);
    reader.shrink();
    const auto again = read(reader, bucket);

    QCOMPARE(texts, (QMap<QByteArray, QByteArray>{{"A", "a"}, {"B", large}, {"C", "c"}}));
    QCOMPARE(again, texts);
}

void NoteReaderTests::onlyItsOwnFilesAreClosed()
{
    const Bucket bucket({{"A", "a"}, {"B", "b"}, {"C", "c"}});
    const FolderListing listing(bucket.root(), FollowLink::No);
    const auto openAnother = [&listing] { return ::dup(listing.descriptor()); };
    const int gap = openAnother();
    const int theirs = openAnother(); // between the numbers that the notes get
    ::close(gap);
    NoteReader reader;

    QCOMPARE(read(reader, listing).size(), 3);

    QVERIFY(::fcntl(theirs, F_GETFD) != -1);
    const int first = openAnother();
    const int second = openAnother();
    for (const int descriptor : {first, second, theirs})
        ::close(descriptor);
    QCOMPARE(first, gap);
    QCOMPARE(second, theirs + 1);
}

void NoteReaderTests::readingLeavesNoTrace()
{
    const Bucket bucket({{"A", "a"}});
    const QByteArray file = bucket.file(u"A"_s).bytes();
    const timespec longAgo[2]{{1'000'000'000, 0}, {1'000'000'100, 0}}; // read before it was written
    QCOMPARE(::utimensat(AT_FDCWD, file.constData(), longAgo, 0), 0);
    NoteReader reader;

    QCOMPARE(read(reader, bucket).value("A"), QByteArray("a"));

    struct stat status;
    QCOMPARE(::stat(file.constData(), &status), 0);
    QCOMPARE(status.st_atim.tv_sec, longAgo[0].tv_sec);
}

void NoteReaderTests::filesOfOtherUsersAreReadToo()
{
    QFile whole(u"/etc/passwd"_s);
    QVERIFY(whole.open(QIODevice::ReadOnly));
    const FolderListing listing(FileURL::fromBytes("/etc", true), FollowLink::No);
    const auto file = std::ranges::find(listing.entries(), "passwd", &FolderListing::Entry::name);
    QVERIFY(file != listing.entries().end());
    // Root owns the file, and may do everything with everyone's.
    constexpr uid_t somebody = 65534;
    const bool isRoot = ::geteuid() == 0;
    QVERIFY(!isRoot || ::seteuid(somebody) == 0);
    const auto restore = qScopeGuard([isRoot] { QVERIFY(!isRoot || ::seteuid(0) == 0); });
    NoteReader reader;
    QByteArray text;

    reader.read(listing.descriptor(), std::span(&*file, 1), [&](std::size_t, std::string_view bytes) {
        text = QByteArray(bytes.data(), qsizetype(bytes.size()));
    });

    QCOMPARE(text, whole.readAll());
}

QTEST_APPLESS_MAIN(NoteReaderTests)
#include "NoteReaderTests.moc"
