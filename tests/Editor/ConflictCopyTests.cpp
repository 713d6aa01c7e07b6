#include "Editor/ConflictCopy.h"

#include "Fakes/Bucket.h"

#include <QTest>

namespace wendlore {

using namespace Qt::StringLiterals;

namespace {

const QDateTime now(QDate(2025, 3, 14), QTime(9, 32, 50));

QString nameOf(const FileURL& note, const QString& computer = u"Annas MacBook"_s)
{
    return conflictCopyURL(note, computer, now).lastPathComponent();
}

} // namespace

class ConflictCopyTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesTheComputerAndTheMinute();
    void liesBesideTheNote();
    void countsWhileTheNameIsTaken();
    void aFileWithoutExtensionGetsNoTrailingDot();
    void aComputerWithoutNameIsCalledMac();
    void aSlashInTheComputersNameLeadsNowhereElse();
    void aLongNameStaysWithinTheFileSystemsLimit_data();
    void aLongNameStaysWithinTheFileSystemsLimit();
};

void ConflictCopyTests::namesTheComputerAndTheMinute()
{
    const Bucket bucket;

    QCOMPARE(nameOf(bucket.file(u"Möte.md"_s)), u"Möte (konflikt Annas MacBook 2025-03-14 0932).md"_s);
}

void ConflictCopyTests::liesBesideTheNote()
{
    const Bucket bucket({{"Arkiv/Möte.md", ""}});

    const FileURL copy = conflictCopyURL(bucket.file(u"Arkiv/Möte.md"_s), u"A"_s, now);

    QCOMPARE(copy.deletingLastPathComponent(), bucket.folder(u"Arkiv"_s));
}

void ConflictCopyTests::countsWhileTheNameIsTaken()
{
    const Bucket bucket({{"Möte (konflikt A 2025-03-14 0932).md", ""}});
    QCOMPARE(nameOf(bucket.file(u"Möte.md"_s), u"A"_s), u"Möte (konflikt A 2025-03-14 0932 2).md"_s);

    bucket.write(u"Möte (konflikt A 2025-03-14 0932 2).md/"_s, {});

    QCOMPARE(nameOf(bucket.file(u"Möte.md"_s), u"A"_s), u"Möte (konflikt A 2025-03-14 0932 3).md"_s);
}

void ConflictCopyTests::aFileWithoutExtensionGetsNoTrailingDot()
{
    const Bucket bucket;

    QCOMPARE(nameOf(bucket.file(u"LÄSMIG"_s), u"A"_s), u"LÄSMIG (konflikt A 2025-03-14 0932)"_s);
}

void ConflictCopyTests::aComputerWithoutNameIsCalledMac()
{
    const Bucket bucket;

    QCOMPARE(nameOf(bucket.file(u"a.md"_s), {}), u"a (konflikt Mac 2025-03-14 0932).md"_s);
}

void ConflictCopyTests::aSlashInTheComputersNameLeadsNowhereElse()
{
    const Bucket bucket;

    QCOMPARE(nameOf(bucket.file(u"a.md"_s), u"../Annas"_s), u"a (konflikt ..-Annas 2025-03-14 0932).md"_s);
}

void ConflictCopyTests::aLongNameStaysWithinTheFileSystemsLimit_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("computer");

    QTest::newRow("long note") << QString(250, u'å').left(126) + u".md"_s << u"Annas dator"_s;
    QTest::newRow("emoji") << u"😀"_s.repeated(62) + u".md"_s << u"Annas dator"_s;
    QTest::newRow("long computer") << u"a.md"_s << QString(400, u'ö');
}

void ConflictCopyTests::aLongNameStaysWithinTheFileSystemsLimit()
{
    QFETCH(const QString, name);
    QFETCH(const QString, computer);
    const Bucket bucket;

    const FileURL first = conflictCopyURL(bucket.file(name), computer, now);
    bucket.write(first.lastPathComponent(), "x");
    const FileURL second = conflictCopyURL(bucket.file(name), computer, now);
    bucket.write(second.lastPathComponent(), "y");

    QCOMPARE(bucket.names().size(), 2);
    QCOMPARE(second.pathExtension(), bucket.file(name).pathExtension());
}

} // namespace wendlore

QTEST_APPLESS_MAIN(wendlore::ConflictCopyTests)
#include "ConflictCopyTests.moc"
