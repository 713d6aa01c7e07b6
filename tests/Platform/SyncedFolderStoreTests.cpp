#include "Platform/SyncedFolderStore.h"

#include "Fakes/Bucket.h"
#include "Fakes/MemoryDefaults.h"

#include <QDir>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

const QString key = u"wendlore_synced_vaults"_s;
/// Longer than the time within which a change has to be noticed.
constexpr int patience = 2000;

/// A device with the folder at `place`.
struct Device final
{
    Device(const Bucket& place, const QString& name)
        : store(place.root(), name, lock.file(u"cloud.lock"_s))
    {}

    [[nodiscard]] QStringList names()
    {
        QStringList names;
        for (const SyncedVaultEntry& entry : list())
            names.append(entry.name);
        return names;
    }
    [[nodiscard]] std::vector<SyncedVaultEntry> list()
    {
        return syncedVaultEntriesFromJson(store.data(key).value_or("[]")).value();
    }
    void add(const QString& name)
    {
        auto entries = list();
        entries.push_back({u"ID"_s, name});
        store.setData(key, toJson(entries));
    }
    void remove(const QString& name)
    {
        auto entries = list();
        std::erase_if(entries, [&name](const auto& entry) { return entry.name == name; });
        store.setData(key, toJson(entries));
    }

    const Bucket lock;
    SyncedFolderStore store;
};

QString fileOf(const QString& device)
{
    return u"wendlore_synced_vaults."_s + device + u".json"_s;
}

} // namespace

class SyncedFolderStoreTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void emptyFolderHoldsNothing();
    void valueIsBackInANewRun();
    void everyDeviceWritesOnlyItsOwnFile();
    void additionsOfDevicesThatWereApartAreMerged();
    void removalOnOneDeviceReachesTheOther();
    void entryThatArrivedAfterTheReadSurvivesTheWrite();
    void writeWithoutAReadRemovesNothing();
    void twoProcessesOfOneDeviceLoseNothing();
    void valueThatIsNoListIsRefused();
    void changeFromElsewhereIsNoticed();
    void ownChangeIsNotExternal();
    void fileWrittenInPlaceIsNoticed();
    void folderThatAppearsLaterIsUsed();
    void brokenFileIsIgnoredAndLogged_data();
    void brokenFileIsIgnoredAndLogged();
    void halfWrittenFileCountsAsItWas();
    void copyMadeByASyncProgramIsIgnoredAndLogged_data();
    void copyMadeByASyncProgramIsIgnoredAndLogged();
    void temporaryFilesOfSyncProgramsAreIgnoredSilently();
    void brokenFileIsLoggedOnce();
    void folderThatIsChosenTakesEffectAtOnce();
    void folderThatWasLeftIsNoLongerListenedTo();
    void folderThatCannotBeWrittenChangesNothing();
    void settingsChooseTheFolder_data();
    void settingsChooseTheFolder();
    void devicesHaveNamesOfTheirOwn();
};

void SyncedFolderStoreTests::emptyFolderHoldsNothing()
{
    const Bucket place;
    Device device(place, u"a1"_s);

    QVERIFY(!device.store.data(key));
    QVERIFY(place.names().isEmpty());
}

void SyncedFolderStoreTests::valueIsBackInANewRun()
{
    const Bucket place;
    Device(place, u"a1"_s).add(u"Anteckningar å"_s);

    QCOMPARE(Device(place, u"a1"_s).list(), (std::vector<SyncedVaultEntry>{{u"ID"_s, u"Anteckningar å"_s}}));
}

void SyncedFolderStoreTests::everyDeviceWritesOnlyItsOwnFile()
{
    const Bucket place;
    Device first(place, u"a1"_s);
    Device second(place, u"b2"_s);
    first.add(u"Notes"_s);
    const QByteArray written = place.read(fileOf(u"a1"_s));

    second.add(u"Annan"_s);
    second.remove(u"Notes"_s);

    QCOMPARE(place.names(), (QStringList{fileOf(u"a1"_s), fileOf(u"b2"_s)}));
    QCOMPARE(place.read(fileOf(u"a1"_s)), written);
    QCOMPARE(first.names(), QStringList{u"Annan"_s});
}

void SyncedFolderStoreTests::additionsOfDevicesThatWereApartAreMerged()
{
    const Bucket here;
    const Bucket there;
    Device first(here, u"a1"_s);
    Device second(there, u"b2"_s);
    first.add(u"Hem"_s);
    second.add(u"Arbete"_s);

    here.write(fileOf(u"b2"_s), there.read(fileOf(u"b2"_s)));
    there.write(fileOf(u"a1"_s), here.read(fileOf(u"a1"_s)));

    QCOMPARE(first.names(), (QStringList{u"Arbete"_s, u"Hem"_s}));
    QCOMPARE(second.names(), first.names());
}

void SyncedFolderStoreTests::removalOnOneDeviceReachesTheOther()
{
    const Bucket place;
    Device first(place, u"a1"_s);
    Device second(place, u"b2"_s);
    first.add(u"Notes"_s);

    second.remove(u"Notes"_s);

    QVERIFY(first.names().isEmpty());
    QVERIFY(Device(place, u"a1"_s).names().isEmpty());
}

void SyncedFolderStoreTests::entryThatArrivedAfterTheReadSurvivesTheWrite()
{
    const Bucket place;
    Device first(place, u"a1"_s);
    Device second(place, u"b2"_s);
    QVERIFY(first.names().isEmpty());
    second.add(u"Arbete"_s);

    first.store.setData(key, toJson({{u"ID"_s, u"Hem"_s}}));

    QCOMPARE(first.names(), (QStringList{u"Arbete"_s, u"Hem"_s}));
}

void SyncedFolderStoreTests::writeWithoutAReadRemovesNothing()
{
    const Bucket place;
    Device(place, u"a1"_s).add(u"Notes"_s);

    Device again(place, u"a1"_s);
    again.store.setData(key, "[]");

    QCOMPARE(again.names(), QStringList{u"Notes"_s});
}

void SyncedFolderStoreTests::twoProcessesOfOneDeviceLoseNothing()
{
    const Bucket place;
    const FileURL lock = place.file(u".lock"_s);
    const auto addTen = [&](const QString& prefix) {
        SyncedFolderStore store(place.root(), u"a1"_s, lock);
        for (int i = 0; i < 10; ++i) {
            auto list = syncedVaultEntriesFromJson(store.data(key).value_or("[]")).value();
            list.push_back({u"ID"_s, prefix + QString::number(i)});
            store.setData(key, toJson(list));
        }
    };
    const std::unique_ptr<QThread> other(QThread::create(addTen, u"B"_s));
    other->start();
    addTen(u"A"_s);
    QVERIFY(other->wait());

    QCOMPARE(Device(place, u"a1"_s).names().size(), 20);
}

void SyncedFolderStoreTests::valueThatIsNoListIsRefused()
{
    const Bucket place;
    Device device(place, u"a1"_s);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"not a list of buckets"_s));

    device.store.setData(key, "nonsense");

    QVERIFY(place.names().isEmpty());
}

void SyncedFolderStoreTests::changeFromElsewhereIsNoticed()
{
    const Bucket place;
    Device first(place, u"a1"_s);
    Device second(place, u"b2"_s);
    QSignalSpy changed(&first.store, &CloudKeyValueStore::changedExternally);
    QVERIFY(first.names().isEmpty());

    second.add(u"Notes"_s);
    QVERIFY(changed.wait(patience));
    QCOMPARE(first.names(), QStringList{u"Notes"_s});

    second.remove(u"Notes"_s);
    QVERIFY(changed.wait(patience));
    QVERIFY(first.names().isEmpty());
}

void SyncedFolderStoreTests::ownChangeIsNotExternal()
{
    const Bucket place;
    Device first(place, u"a1"_s);
    Device second(place, u"b2"_s);
    QSignalSpy changed(&first.store, &CloudKeyValueStore::changedExternally);
    QSignalSpy noticed(&second.store, &CloudKeyValueStore::changedExternally);
    QVERIFY(second.names().isEmpty());

    first.add(u"Notes"_s);

    QVERIFY(noticed.wait(patience));
    QCOMPARE(changed.count(), 0);
}

void SyncedFolderStoreTests::fileWrittenInPlaceIsNoticed()
{
    const Bucket place;
    Device first(place, u"a1"_s);
    place.write(fileOf(u"b2"_s), toJson({{u"A"_s, {1, u"ID"_s}}}, u"b2"_s));
    QCOMPARE(first.names(), QStringList{u"A"_s});
    QSignalSpy changed(&first.store, &CloudKeyValueStore::changedExternally);

    place.write(fileOf(u"b2"_s), toJson({{u"B"_s, {1, u"ID"_s}}}, u"b2"_s));

    QVERIFY(changed.wait(patience));
    QCOMPARE(first.names(), QStringList{u"B"_s});
}

void SyncedFolderStoreTests::folderThatAppearsLaterIsUsed()
{
    const Bucket place;
    SyncedFolderStore store(place.folder(u"moln/lista"_s), u"a1"_s, place.file(u"cloud.lock"_s));
    QVERIFY(QDir(place.folder(u"moln"_s).path()).removeRecursively());
    QVERIFY(!store.data(key));

    store.setData(key, toJson({{u"ID"_s, u"Notes"_s}}));

    QVERIFY(place.exists(u"moln/lista/"_s + fileOf(u"a1"_s)));
}

void SyncedFolderStoreTests::brokenFileIsIgnoredAndLogged_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("empty") << QByteArray();
    QTest::newRow("half") << toJson({{u"A"_s, {1, u"ID"_s}}}, u"b2"_s).chopped(9);
    QTest::newRow("no JSON") << QByteArray("\xff\xfe\x00", 3);
    QTest::newRow("another device's") << toJson({{u"A"_s, {1, u"ID"_s}}}, u"c3"_s);
}

void SyncedFolderStoreTests::brokenFileIsIgnoredAndLogged()
{
    QFETCH(const QByteArray, bytes);
    const Bucket place;
    Device device(place, u"a1"_s);
    device.add(u"Notes"_s);
    place.write(fileOf(u"b2"_s), bytes);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"ignoring.*b2.json.*cannot be understood"_s));

    QCOMPARE(device.names(), QStringList{u"Notes"_s});
}

void SyncedFolderStoreTests::halfWrittenFileCountsAsItWas()
{
    const Bucket place;
    Device device(place, u"a1"_s);
    const QByteArray whole = toJson({{u"A"_s, {1, u"ID"_s}}}, u"b2"_s);
    place.write(fileOf(u"b2"_s), whole);
    QCOMPARE(device.names(), QStringList{u"A"_s});

    place.write(fileOf(u"b2"_s), whole.first(whole.size() / 2));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"ignoring.*b2.json"_s));

    QCOMPARE(device.names(), QStringList{u"A"_s});
}

void SyncedFolderStoreTests::copyMadeByASyncProgramIsIgnoredAndLogged_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("Syncthing") << u"wendlore_synced_vaults.b2.sync-conflict-20240301-101200-ABCDEFG.json"_s;
    QTest::newRow("Dropbox") << u"wendlore_synced_vaults.b2 (Annas konfliktversion 2024-03-01).json"_s;
    QTest::newRow("Nextcloud") << u"wendlore_synced_vaults.b2 (conflicted copy 2024-03-01 101200).json"_s;
    QTest::newRow("a computer's name") << u"wendlore_synced_vaults.b2-laptop.json"_s;
    QTest::newRow("a number") << u"wendlore_synced_vaults.b2 (1).json"_s;
    QTest::newRow("a backup") << u"wendlore_synced_vaults.b2.json~"_s;
}

void SyncedFolderStoreTests::copyMadeByASyncProgramIsIgnoredAndLogged()
{
    QFETCH(const QString, name);
    const Bucket place;
    Device device(place, u"a1"_s);
    place.write(name, toJson({{u"A"_s, {9, u"ID"_s}}}, u"b2"_s));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"ignoring.*which no device writes"_s));

    QVERIFY(device.names().isEmpty());
}

void SyncedFolderStoreTests::temporaryFilesOfSyncProgramsAreIgnoredSilently()
{
    const Bucket place;
    Device device(place, u"a1"_s);
    place.write(u".syncthing."_s + fileOf(u"b2"_s) + u".tmp"_s, "half");
    place.write(u"README.txt"_s, "not ours");
    QTest::failOnWarning(QRegularExpression(u"."_s));

    QVERIFY(device.names().isEmpty());
}

void SyncedFolderStoreTests::brokenFileIsLoggedOnce()
{
    const Bucket place;
    Device device(place, u"a1"_s);
    place.write(fileOf(u"b2"_s), "half");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"ignoring.*b2.json"_s));
    QVERIFY(device.names().isEmpty());

    QTest::failOnWarning(QRegularExpression(u"ignoring"_s));
    QVERIFY(device.names().isEmpty());
}

void SyncedFolderStoreTests::folderThatIsChosenTakesEffectAtOnce()
{
    const Bucket standard;
    const Bucket shared;
    Device other(shared, u"b2"_s);
    other.add(u"Arbete"_s);
    Device device(standard, u"a1"_s);
    device.add(u"Hem"_s);
    QSignalSpy changes(&device.store, &SyncedFolderStore::changedExternally);

    device.store.moveTo(shared.root());

    QCOMPARE(changes.count(), 1);
    QCOMPARE(device.names(), (QStringList{u"Arbete"_s, u"Hem"_s}));
    QCOMPARE(other.names(), device.names());
    QCOMPARE(standard.names(), QStringList{fileOf(u"a1"_s)});
    other.add(u"Resor"_s);
    QVERIFY(changes.wait(patience));
    QCOMPARE(device.names(), (QStringList{u"Arbete"_s, u"Hem"_s, u"Resor"_s}));
}

void SyncedFolderStoreTests::folderThatWasLeftIsNoLongerListenedTo()
{
    const Bucket standard;
    const Bucket shared;
    Device left(standard, u"b2"_s);
    Device device(standard, u"a1"_s);
    device.add(u"Hem"_s);
    device.store.moveTo(shared.root());

    left.add(u"Arbete"_s);

    QCOMPARE(device.names(), QStringList{u"Hem"_s});
}

void SyncedFolderStoreTests::folderThatCannotBeWrittenChangesNothing()
{
    const Bucket place({{"fil", "text"}});
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot make"_s));
    SyncedFolderStore store(place.folder(u"fil/lista"_s), u"a1"_s, place.file(u"cloud.lock"_s));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot make"_s));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot write"_s));

    store.setData(key, toJson({{u"ID"_s, u"Notes"_s}}));

    QVERIFY(!store.data(key));
    QCOMPARE(place.read(u"fil"_s), QByteArray("text"));
}

void SyncedFolderStoreTests::settingsChooseTheFolder_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QString>("folder");

    QTest::newRow("none") << QString() << u"/standard"_s;
    QTest::newRow("empty") << u""_s << u"/standard"_s;
    QTest::newRow("absolute") << u"/moln/å"_s << u"/moln/å"_s;
    QTest::newRow("in the home") << u"~/Dropbox/Wendlores"_s << QDir::home().filePath(u"Dropbox/Wendlores"_s);
    QTest::newRow("relative") << u"Dropbox"_s << QDir::home().filePath(u"Dropbox"_s);
}

void SyncedFolderStoreTests::settingsChooseTheFolder()
{
    QFETCH(const QString, setting);
    QFETCH(const QString, folder);
    MemoryDefaults defaults;
    if (!setting.isNull())
        defaults.setString(u"wendloreCloudFolder"_s, setting);

    QCOMPARE(SyncedFolderStore::chosenFolder(defaults, FileURL::directory(u"/standard"_s)),
             FileURL::directory(folder));
}

void SyncedFolderStoreTests::devicesHaveNamesOfTheirOwn()
{
    const QString name = SyncedFolderStore::thisDevice(FileURL::directory(u"/hem/anna"_s));

    QVERIFY(QRegularExpression(u"^[0-9a-f]{32}$"_s).match(name).hasMatch());
    QCOMPARE(SyncedFolderStore::thisDevice(FileURL::directory(u"/hem/anna"_s)), name);
    QVERIFY(SyncedFolderStore::thisDevice(FileURL::directory(u"/hem/bo"_s)) != name);
}

QTEST_GUILESS_MAIN(SyncedFolderStoreTests)
#include "SyncedFolderStoreTests.moc"
