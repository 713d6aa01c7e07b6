#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"

#include <QSignalSpy>
#include <QTest>
#include <QUuid>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

const QString listKey = u"wendlore_synced_vaults"_s;

std::vector<SyncedVaultEntry> list(const MemoryCloud& cloud)
{
    return syncedVaultEntriesFromJson(cloud.values.value(listKey)).value_or(std::vector<SyncedVaultEntry>());
}

QStringList names(const std::vector<SyncedVaultEntry>& entries)
{
    QStringList names;
    for (const SyncedVaultEntry& entry : entries)
        names.append(entry.name);
    return names;
}

} // namespace

class AppStateBucketsCloudTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void addedBucketIsInTheCloudWithAFreshIdentifier();
    void pickedFolderIsInTheCloud();
    void folderThatCannotBeBookmarkedIsInTheCloudAllTheSame();
    void addingAKnownNameKeepsTheEntryThatIsThere();
    void bucketsOfTheSameNameShareOneEntry();
    void removingEitherBucketOfANameRemovesItsEntry_data();
    void removingEitherBucketOfANameRemovesItsEntry();
    void removingABucketKeepsTheOtherEntries();
    void unlinkedBucketsArePendingInTheCloudsOrder();
    void bucketIsPendingUntilAFolderOfItsNameIsLinked();
    void cloudIsReadWhenTheProgramStarts();
    void changeFromElsewhereShowsAtOnce();
    void unchangedListIsNotAnnounced();
    void everyChangeIsHandedToTheCloudAtOnce();
    void undecodableListCountsAsEmpty_data();
    void undecodableListCountsAsEmpty();
};

void AppStateBucketsCloudTests::addedBucketIsInTheCloudWithAFreshIdentifier()
{
    const Bucket place({{"Anteckningar å/", ""}, {"Andra/", ""}});
    FakeServices desktop;
    AppState state(desktop.services());

    state.addVault(place.folder(u"Anteckningar å"_s));
    state.addVault(place.folder(u"Andra"_s));

    const auto entries = list(desktop.cloud);
    QCOMPARE(names(entries), (QStringList{u"Anteckningar å"_s, u"Andra"_s}));
    QVERIFY(entries[0].id != entries[1].id);
    QVERIFY(!QUuid::fromString(entries[0].id).isNull());
    QCOMPARE(entries[0].id.size(), 36);
    QCOMPARE(entries[0].id, entries[0].id.toUpper());
    QVERIFY(state.pendingVaults().empty());
}

void AppStateBucketsCloudTests::pickedFolderIsInTheCloud()
{
    const Bucket place({{"Notes/", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    desktop.panels.answer = place.folder(u"Notes"_s);

    state.pickVault();

    QCOMPARE(names(list(desktop.cloud)), QStringList{u"Notes"_s});
}

void AppStateBucketsCloudTests::folderThatCannotBeBookmarkedIsInTheCloudAllTheSame()
{
    const Bucket place;
    FakeServices desktop;
    AppState state(desktop.services());

    state.addVault(place.folder(u"Saknas"_s));

    QCOMPARE(names(list(desktop.cloud)), QStringList{u"Saknas"_s});
    QCOMPARE(names(state.pendingVaults()), QStringList{u"Saknas"_s});
}

void AppStateBucketsCloudTests::addingAKnownNameKeepsTheEntryThatIsThere()
{
    const Bucket place({{"Notes/", ""}});
    FakeServices desktop;
    desktop.cloud.values[listKey] = R"([{"id":"FROM-ELSEWHERE","name":"Notes"}])";
    AppState state(desktop.services());

    state.addVault(place.folder(u"Notes"_s));

    QCOMPARE(list(desktop.cloud), (std::vector<SyncedVaultEntry>{{u"FROM-ELSEWHERE"_s, u"Notes"_s}}));
}

void AppStateBucketsCloudTests::bucketsOfTheSameNameShareOneEntry()
{
    const Bucket place({{"Hem/Notes/", ""}, {"Arbete/Notes/", ""}});
    FakeServices desktop;
    AppState state(desktop.services());

    state.addVault(place.folder(u"Hem/Notes"_s));
    state.addVault(place.folder(u"Arbete/Notes"_s));

    QCOMPARE(state.vaults().size(), 2);
    QCOMPARE(names(list(desktop.cloud)), QStringList{u"Notes"_s});
}

void AppStateBucketsCloudTests::removingEitherBucketOfANameRemovesItsEntry_data()
{
    QTest::addColumn<QString>("removed");

    QTest::newRow("the first") << u"Hem/Notes"_s;
    QTest::newRow("the second") << u"Arbete/Notes"_s;
}

void AppStateBucketsCloudTests::removingEitherBucketOfANameRemovesItsEntry()
{
    QFETCH(const QString, removed);
    const Bucket place({{"Hem/Notes/", ""}, {"Arbete/Notes/", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(place.folder(u"Hem/Notes"_s));
    state.addVault(place.folder(u"Arbete/Notes"_s));
    FakeServices elsewhere;
    AppState other(elsewhere.services());
    elsewhere.cloud.arrive(listKey, desktop.cloud.values[listKey]);
    QCOMPARE(names(other.pendingVaults()), QStringList{u"Notes"_s});

    state.removeBucket(place.folder(removed));
    elsewhere.cloud.arrive(listKey, desktop.cloud.values[listKey]);

    QVERIFY(list(desktop.cloud).empty());
    QVERIFY(other.pendingVaults().empty());
    QCOMPARE(state.vaults().size(), 1);
}

void AppStateBucketsCloudTests::removingABucketKeepsTheOtherEntries()
{
    const Bucket place({{"Notes/", ""}, {"Dagbok/", ""}});
    FakeServices desktop;
    desktop.cloud.values[listKey] = R"([{"id":"1","name":"Annan"}])";
    AppState state(desktop.services());
    state.addVault(place.folder(u"Notes"_s));
    state.addVault(place.folder(u"Dagbok"_s));

    state.removeBucket(place.folder(u"Notes"_s));

    QCOMPARE(names(list(desktop.cloud)), (QStringList{u"Annan"_s, u"Dagbok"_s}));
    QCOMPARE(names(state.pendingVaults()), QStringList{u"Annan"_s});
}

void AppStateBucketsCloudTests::unlinkedBucketsArePendingInTheCloudsOrder()
{
    const Bucket place({{"M/", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(place.folder(u"M"_s));

    desktop.cloud.arrive(
        listKey,
        R"([{"id":"1","name":"Ö"},{"id":"2","name":"M"},{"id":"3","name":"A"},{"id":"4","name":"m"}])");

    QCOMPARE(names(state.pendingVaults()), (QStringList{u"Ö"_s, u"A"_s, u"m"_s}));
}

void AppStateBucketsCloudTests::bucketIsPendingUntilAFolderOfItsNameIsLinked()
{
    const Bucket place({{"Notes/", ""}, {"Annan/", ""}});
    FakeServices desktop;
    desktop.cloud.values[listKey] = R"([{"id":"1","name":"Notes"}])";
    AppState state(desktop.services());
    const QSignalSpy changed(&state, &AppState::pendingVaultsChanged);
    state.addVault(place.folder(u"Annan"_s));
    QCOMPARE(names(state.pendingVaults()), QStringList{u"Notes"_s});

    state.addVault(place.folder(u"Notes"_s));

    QVERIFY(state.pendingVaults().empty());
    QCOMPARE(changed.count(), 1);
}

void AppStateBucketsCloudTests::cloudIsReadWhenTheProgramStarts()
{
    const Bucket place({{"Notes/", ""}});
    FakeServices desktop;
    {
        AppState earlier(desktop.services());
        earlier.addVault(place.folder(u"Notes"_s));
    }
    desktop.cloud.values[listKey] = R"([{"id":"1","name":"Notes"},{"id":"2","name":"Annan"}])";
    desktop.cloud.synchronizations = 0;

    const AppState state(desktop.services());

    QCOMPARE(desktop.cloud.synchronizations, 1);
    QCOMPARE(names(state.pendingVaults()), QStringList{u"Annan"_s});
}

void AppStateBucketsCloudTests::changeFromElsewhereShowsAtOnce()
{
    FakeServices desktop;
    AppState state(desktop.services());
    const QSignalSpy changed(&state, &AppState::pendingVaultsChanged);

    desktop.cloud.arrive(listKey, R"([{"id":"1","name":"Notes"}])");

    QCOMPARE(state.pendingVaults(), (std::vector<SyncedVaultEntry>{{u"1"_s, u"Notes"_s}}));
    QCOMPARE(changed.count(), 1);
}

void AppStateBucketsCloudTests::unchangedListIsNotAnnounced()
{
    FakeServices desktop;
    desktop.cloud.values[listKey] = R"([{"id":"1","name":"Notes"}])";
    AppState state(desktop.services());
    const QSignalSpy changed(&state, &AppState::pendingVaultsChanged);

    desktop.cloud.arrive(listKey, R"([ {"id":"1","name":"Notes"} ])");

    QCOMPARE(changed.count(), 0);
}

void AppStateBucketsCloudTests::everyChangeIsHandedToTheCloudAtOnce()
{
    const Bucket place({{"Notes/", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    desktop.cloud.synchronizations = 0;

    state.addVault(place.folder(u"Notes"_s));
    QCOMPARE(desktop.cloud.synchronizations, 1);

    state.removeBucket(place.folder(u"Notes"_s));
    QCOMPARE(desktop.cloud.synchronizations, 2);
}

void AppStateBucketsCloudTests::undecodableListCountsAsEmpty_data()
{
    QTest::addColumn<QByteArray>("value");

    QTest::newRow("no JSON") << QByteArray("\xff\x00nonsense", 10);
    QTest::newRow("half a list") << QByteArray(R"([{"id":"1","name":"Notes"},)");
    QTest::newRow("another list") << QByteArray(R"([1, 2])");
}

void AppStateBucketsCloudTests::undecodableListCountsAsEmpty()
{
    QFETCH(const QByteArray, value);
    const Bucket place({{"Notes/", ""}});
    FakeServices desktop;
    desktop.cloud.values[listKey] = value;
    AppState state(desktop.services());
    QVERIFY(state.pendingVaults().empty());

    state.addVault(place.folder(u"Notes"_s));

    QCOMPARE(names(list(desktop.cloud)), QStringList{u"Notes"_s});
}

QTEST_GUILESS_MAIN(AppStateBucketsCloudTests)
#include "AppStateBucketsCloudTests.moc"
