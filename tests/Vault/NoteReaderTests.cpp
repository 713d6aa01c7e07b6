#include "Vault/NoteReader.h"

#include "Fakes/Bucket.h"

#include "Vault/ByteScanner.h"

#include <QMap>
#include <QTest>

#include <sys/stat.h>

using namespace wendlore;
using namespace Qt::StringLiterals;

namespace {

/// What was read, by the file's place in the list.
QMap<int, QByteArray> read(NoteReader& reader, const Bucket& bucket, const std::vector<QByteArray>& names)
{
    QMap<int, QByteArray> texts;
    reader.read(bucket.root(), names, [&](std::size_t index, std::string_view bytes) {
        texts[int(index)] = QByteArray(bytes.data(), qsizetype(bytes.size()));
    });
    return texts;
}

} // namespace

class NoteReaderTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsEveryFileOfAList();
    void passesOverWhatIsNoFile();
    void bytesBehindTheTextAreReadable();
    void aLargeFileBetweenSmallOnesIsReadWhole();
};

void NoteReaderTests::readsEveryFileOfAList()
{
    const Bucket bucket;
    std::vector<QByteArray> names;
    for (int i = 0; i < 200; ++i) {
        names.push_back(QByteArray::number(i));
        bucket.write(QString::number(i), QByteArray::number(i * i));
    }
    NoteReader reader;

    const auto texts = read(reader, bucket, names);

    QCOMPARE(texts.size(), 200);
    for (int i = 0; i < 200; ++i)
        QCOMPARE(texts[i], QByteArray::number(i * i));
}

void NoteReaderTests::passesOverWhatIsNoFile()
{
    const Bucket bucket({{"A", "a"}, {"mapp/", ""}, {"tom", ""}});
    QCOMPARE(::mkfifo(bucket.file(u"rör"_s).bytes().constData(), 0600), 0);
    NoteReader reader;

    const auto texts = read(reader, bucket, {"mapp", "borta", "rör", "A", "tom"});

    QCOMPARE(texts, (QMap<int, QByteArray>{{3, "a"}, {4, ""}}));
}

void NoteReaderTests::bytesBehindTheTextAreReadable()
{
    const Bucket bucket({{"A", "lång text"}, {"B", "b"}});
    const std::vector<QByteArray> names{"A", "B"};
    NoteReader reader;

    reader.read(bucket.root(), names, [](std::size_t, std::string_view bytes) {
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

    const auto texts = read(reader, bucket, {"A", "B", "C"});
    reader.shrink();
    const auto again = read(reader, bucket, {"A", "B", "C"});

    QCOMPARE(texts, (QMap<int, QByteArray>{{0, "a"}, {1, large}, {2, "c"}}));
    QCOMPARE(again, texts);
}

QTEST_APPLESS_MAIN(NoteReaderTests)
#include "NoteReaderTests.moc"
