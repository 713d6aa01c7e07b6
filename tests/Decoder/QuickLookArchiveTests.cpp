#include "Decoder/QuickLookArchive.h"

#include "Fakes/Bucket.h"
#include "Support/Programs.h"

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace wendlore;

namespace {

const QStringList tarOf(const Bucket& bucket, const QString& name, const QString& kind)
{
    return {kind, bucket.file(name).path(), u"-C"_s, bucket.folder(u"in"_s).path(), u"."_s};
}

QStringList pathsOf(const ArchiveListing& listing)
{
    QStringList paths;
    for (const ArchiveEntry& entry : listing.entries)
        paths.append(entry.path);
    paths.sort();
    return paths;
}

bool wantsEverything(const QString&)
{
    return true;
}

} // namespace

class QuickLookArchiveTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anArchiveIsListed_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("kind");
        QTest::newRow("tar") << u"a.tar"_s << u"-cf"_s;
        QTest::newRow("gzip") << u"a.tar.gz"_s << u"-czf"_s;
        QTest::newRow("xz") << u"a.tar.xz"_s << u"-cJf"_s;
    }

    void anArchiveIsListed()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, kind);
        const Bucket bucket{{"in/Åsa.txt", "hej"}, {"in/mapp/b.txt", ""}};
        runProgram(u"tar"_s, tarOf(bucket, name, kind));

        const auto listing = listArchive(bucket.file(name), QuickLookLimits());

        QVERIFY(listing && listing->isWhole);
        QCOMPARE(pathsOf(*listing), (QStringList{u"./"_s, u"./mapp/"_s, u"./mapp/b.txt"_s, u"./Åsa.txt"_s}));
        for (const ArchiveEntry& entry : listing->entries)
            QCOMPARE(entry.isFolder, entry.path.endsWith(u'/'));
    }

    void aZipFileIsListedWithSizesAndTimes()
    {
        const Bucket bucket{{"in/a.txt", "hej"}};
        runProgram(u"zip"_s, {u"-qj"_s, bucket.file(u"a.zip"_s).path(), bucket.file(u"in/a.txt"_s).path()});

        const auto listing = listArchive(bucket.file(u"a.zip"_s), QuickLookLimits());

        QVERIFY(listing);
        QCOMPARE(listing->entries.size(), 1);
        QCOMPARE(listing->entries.first().size, 3);
        QVERIFY(std::abs(listing->entries.first().modified.secsTo(QDateTime::currentDateTime())) < 600);
        QVERIFY(listingPage(*listing).body.contains("<td>a.txt</td><td class=\"number\">3 byte</td>"));
    }

    void aLongListingIsCut()
    {
        const Bucket bucket{{"in/a.txt", ""}, {"in/b.txt", ""}, {"in/c.txt", ""}};
        runProgram(u"tar"_s, tarOf(bucket, u"a.tar"_s, u"-cf"_s));

        const auto listing = listArchive(bucket.file(u"a.tar"_s), QuickLookLimits(), 2);

        QVERIFY(listing && !listing->isWhole);
        QVERIFY(listingPage(*listing).body.startsWith("<p class=\"notice\">Här visas de första 2 posterna."));
    }

    void namesInAnArchiveAreNoMarkup()
    {
        const ArchiveListing listing{{{u"<b>"_s, {}, {}, false}}, true};

        QVERIFY(listingPage(listing).body.contains("<td>&lt;b&gt;</td>"));
    }

    void contentsAreReadUpToASize()
    {
        const Bucket bucket{{"in/a.txt", "12345"}, {"in/b.txt", "678"}};
        runProgram(u"zip"_s, {u"-qj"_s, bucket.file(u"a.zip"_s).path(), bucket.file(u"in/a.txt"_s).path(),
                              bucket.file(u"in/b.txt"_s).path()});
        const FileURL file = bucket.file(u"a.zip"_s);

        const auto all = readArchive(file, wantsEverything, 100, QuickLookLimits());
        const auto some = readArchive(file, wantsEverything, 4, QuickLookLimits());

        QCOMPARE(all.value(u"a.txt"_s), QByteArray("12345"));
        QCOMPARE(some.keys(), QStringList{u"b.txt"_s});
    }

    void aBombIsNotUnpacked()
    {
        const Bucket bucket{{"in/null", ""}};
        QVERIFY(QFile::resize(bucket.file(u"in/null"_s).path(), 300'000'000));
        runProgram(u"tar"_s, {u"--use-compress-program=gzip -1"_s, u"-cf"_s, bucket.file(u"a.tgz"_s).path(),
                              u"-C"_s, bucket.root().path(), u"in"_s});

        const auto contents =
            readArchive(bucket.file(u"a.tgz"_s), wantsEverything, 1'000'000, QuickLookLimits());

        QVERIFY(contents.isEmpty());
    }

    void workThatIsStoppedReadsNothing()
    {
        const Bucket bucket{{"in/a.txt", "1"}};
        runProgram(u"tar"_s, tarOf(bucket, u"a.tar"_s, u"-cf"_s));
        const QuickLookLimits limits;
        limits.stop();

        QVERIFY(!listArchive(bucket.file(u"a.tar"_s), limits));
        QVERIFY(!listArchive(bucket.file(u"a.tar"_s), QuickLookLimits(0ms)));
    }

    void whatIsNoArchiveGivesNothing()
    {
        const Bucket bucket{{"a.zip", "inget arkiv"}, {"tom.zip", ""}};

        QVERIFY(!listArchive(bucket.file(u"a.zip"_s), QuickLookLimits()));
        QVERIFY(!listArchive(bucket.file(u"tom.zip"_s), QuickLookLimits()));
        QVERIFY(!listArchive(bucket.file(u"saknas.zip"_s), QuickLookLimits()));
        QVERIFY(!listArchive(bucket.root(), QuickLookLimits()));
    }

    void damagedArchivesEndSomehow_data()
    {
        QTest::addColumn<QString>("name");
        for (const char* name : {"a.tar", "a.tar.gz", "a.tar.xz", "a.zip"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }

    void damagedArchivesEndSomehow()
    {
        QFETCH(const QString, name);
        const Bucket bucket{{"in/a.txt", "en text som är lång nog"}, {"in/m/b.txt", "två"}};
        if (name.endsWith(u".zip"_s))
            runProgram(u"zip"_s, {u"-qr"_s, bucket.file(name).path(), bucket.folder(u"in"_s).path()});
        else
            runProgram(u"tar"_s,
                       {u"-caf"_s, bucket.file(name).path(), u"-C"_s, bucket.root().path(), u"in"_s});
        const QByteArray whole = bucket.read(name);

        QRandomGenerator random(5);
        const int rounds = 500 * (qEnvironmentVariableIsSet("LONG") ? 20 : 1);
        for (int round = 0; round < rounds; ++round) {
            QByteArray damaged = whole;
            for (int i = random.bounded(1, 6); i > 0; --i)
                damaged[random.bounded(int(damaged.size()))] = static_cast<char>(random.bounded(256));
            damaged.truncate(random.bounded(int(damaged.size() + 1)));
            bucket.write(u"skadad"_s, damaged);
            const auto contents =
                readArchive(bucket.file(u"skadad"_s), wantsEverything, 1000, QuickLookLimits(5s));
            for (const QByteArray& bytes : contents)
                QVERIFY(bytes.size() <= 1000);
        }
    }
};

QTEST_GUILESS_MAIN(QuickLookArchiveTests)
#include "QuickLookArchiveTests.moc"
