#include "Platform/BucketChanges.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

const QString deviceName = u"a1"_s;

BucketChange added(qint64 time, const QString& id = u"ID"_s)
{
    return {time, id};
}

BucketChange removed(qint64 time)
{
    return {time, std::nullopt};
}

QStringList names(const BucketChanges& changes)
{
    QStringList names;
    for (const SyncedVaultEntry& entry : entries(changes))
        names.append(entry.name);
    return names;
}

BucketChanges merged(std::initializer_list<BucketChanges> shares)
{
    BucketChanges all;
    for (const BucketChanges& share : shares)
        merge(all, share);
    return all;
}

/// A device that reads, changes and writes the list.
struct Device final
{
    BucketChanges own;
    BucketChanges all;

    void write(const std::vector<SyncedVaultEntry>& wanted)
    {
        record(own, all, entries(all), wanted);
        merge(all, own);
    }
    void add(const QString& name)
    {
        auto list = entries(all);
        list.push_back({u"ID"_s, name});
        write(list);
    }
    void remove(const QString& name)
    {
        auto list = entries(all);
        std::erase_if(list, [&name](const auto& entry) { return entry.name == name; });
        write(list);
    }
};

void meet(std::initializer_list<Device*> devices)
{
    BucketChanges all;
    for (const Device* device : devices)
        merge(all, device->own);
    for (Device* device : devices)
        device->all = all;
}

} // namespace

class BucketChangesTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void changesAreReadAsTheyWereWritten();
    void anythingElseIsNotRead_data();
    void anythingElseIsNotRead();
    void laterChangeHolds();
    void additionHoldsOverARemovalOfTheSameTime();
    void entriesAreInTheOrderOfTheirAddition();
    void additionsOfTwoDevicesApartBothSurvive();
    void removalIsNotUndoneByAnOlderAdditionThatArrivesLater();
    void removedBucketCanBeAddedAgain();
    void additionThatCameInMeanwhileIsKept();
    void forgottenChangesDoNotComeBackWithoutTheOtherDevice();
    void timeStopsAtTheLargestThatCanBeWritten();
    void devicesAgreeWhateverTheOrder();
};

void BucketChangesTests::changesAreReadAsTheyWereWritten()
{
    const BucketChanges changes{{u"Å \"b\""_s, added(7)}, {u""_s, removed(qint64(1) << 52)}};

    QCOMPARE(bucketChangesFromJson(toJson(changes, deviceName), deviceName), changes);
    QCOMPARE(bucketChangesFromJson(toJson({}, deviceName), deviceName), BucketChanges());
}

void BucketChangesTests::anythingElseIsNotRead_data()
{
    QTest::addColumn<QByteArray>("json");
    const QByteArray start = R"({"device":"a1","changes":[)";

    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("zeros") << QByteArray(500, '\0');
    QTest::newRow("half a file") << toJson({{u"A"_s, added(1)}}, deviceName).chopped(20);
    QTest::newRow("an array") << QByteArray("[]");
    QTest::newRow("no changes") << QByteArray(R"({"device":"a1"})");
    QTest::newRow("of another device") << toJson({{u"A"_s, added(1)}}, u"b2"_s);
    QTest::newRow("no name") << start + R"({"time":1}]})";
    QTest::newRow("no time") << start + R"({"name":"A"}]})";
    QTest::newRow("time zero") << start + R"({"name":"A","time":0}]})";
    QTest::newRow("time below zero") << start + R"({"name":"A","time":-1}]})";
    QTest::newRow("time too large") << start + R"({"name":"A","time":9007199254740992}]})";
    QTest::newRow("a text as time") << start + R"({"name":"A","time":"1"}]})";
    QTest::newRow("a number as id") << start + R"({"name":"A","time":1,"id":1}]})";
    QTest::newRow("one good, one bad") << start + R"({"name":"A","time":1},7]})";
}

void BucketChangesTests::anythingElseIsNotRead()
{
    QFETCH(const QByteArray, json);

    QVERIFY(!bucketChangesFromJson(json, deviceName));
}

void BucketChangesTests::laterChangeHolds()
{
    const BucketChanges earlier{{u"A"_s, added(3)}, {u"B"_s, removed(3)}};
    const BucketChanges later{{u"A"_s, removed(4)}, {u"B"_s, added(4)}};

    QCOMPARE(names(merged({earlier, later})), QStringList{u"B"_s});
    QCOMPARE(names(merged({later, earlier})), QStringList{u"B"_s});
}

void BucketChangesTests::additionHoldsOverARemovalOfTheSameTime()
{
    const BucketChanges addition{{u"A"_s, added(3)}};
    const BucketChanges removal{{u"A"_s, removed(3)}};

    QCOMPARE(names(merged({addition, removal})), QStringList{u"A"_s});
    QCOMPARE(names(merged({removal, addition})), QStringList{u"A"_s});
}

void BucketChangesTests::entriesAreInTheOrderOfTheirAddition()
{
    QCOMPARE(names({{u"A"_s, added(3)}, {u"B"_s, added(1)}, {u"C"_s, removed(2)}, {u"D"_s, added(3)}}),
             (QStringList{u"B"_s, u"A"_s, u"D"_s}));
}

void BucketChangesTests::additionsOfTwoDevicesApartBothSurvive()
{
    Device first;
    Device second;
    first.add(u"Hem"_s);
    second.add(u"Arbete"_s);

    meet({&first, &second});

    QCOMPARE(names(first.all), (QStringList{u"Arbete"_s, u"Hem"_s}));
    QCOMPARE(second.all, first.all);
}

void BucketChangesTests::removalIsNotUndoneByAnOlderAdditionThatArrivesLater()
{
    Device first;
    Device second;
    first.add(u"Notes"_s);
    second.add(u"Notes"_s);
    first.remove(u"Notes"_s);

    meet({&first, &second});

    QVERIFY(names(first.all).isEmpty());
    second.add(u"Annan"_s);
    meet({&first, &second});
    QCOMPARE(names(first.all), QStringList{u"Annan"_s});
}

void BucketChangesTests::removedBucketCanBeAddedAgain()
{
    Device first;
    Device second;
    first.add(u"Notes"_s);
    meet({&first, &second});
    second.remove(u"Notes"_s);
    meet({&first, &second});
    QVERIFY(names(first.all).isEmpty());

    first.add(u"Notes"_s);
    meet({&first, &second});

    QCOMPARE(names(second.all), QStringList{u"Notes"_s});
}

void BucketChangesTests::additionThatCameInMeanwhileIsKept()
{
    BucketChanges own;
    const BucketChanges all{{u"A"_s, added(1)}, {u"Ny"_s, added(2)}};

    record(own, all, {{u"ID"_s, u"A"_s}}, {});

    QCOMPARE(names(merged({all, own})), QStringList{u"Ny"_s});
}

void BucketChangesTests::forgottenChangesDoNotComeBackWithoutTheOtherDevice()
{
    Device first;
    Device second;
    first.add(u"Notes"_s);
    meet({&first, &second});
    second.remove(u"Notes"_s);
    meet({&first, &second});
    first.add(u"Annan"_s);

    QCOMPARE(names(first.own), QStringList{u"Annan"_s});
}

void BucketChangesTests::timeStopsAtTheLargestThatCanBeWritten()
{
    const qint64 largest = qint64(1) << 52;
    BucketChanges own;

    record(own, {{u"A"_s, added(largest)}}, {}, {{u"ID"_s, u"B"_s}});

    QCOMPARE(own.value(u"B"_s).time, largest);
    QCOMPARE(bucketChangesFromJson(toJson(own, deviceName), deviceName), own);
}

void BucketChangesTests::devicesAgreeWhateverTheOrder()
{
    QRandomGenerator random(20240301);
    for (int round = 0; round < 500; ++round) {
        std::array<Device, 3> devices;
        for (int step = 0; step < 20; ++step) {
            Device& one = devices[random.bounded(3u)];
            const QString name(1, QChar(u'A' + random.bounded(4)));
            const int kind = random.bounded(3);
            if (kind == 0)
                one.add(name);
            else if (kind == 1)
                one.remove(name);
            else
                merge(one.all, devices[random.bounded(3u)].own);
        }

        const BucketChanges forth = merged({devices[0].own, devices[1].own, devices[2].own});
        const BucketChanges back = merged({devices[2].own, devices[1].own, devices[0].own});

        QCOMPARE(back, forth);
        QCOMPARE(merged({forth, forth, devices[1].own}), forth);
    }
}

QTEST_GUILESS_MAIN(BucketChangesTests)
#include "BucketChangesTests.moc"
