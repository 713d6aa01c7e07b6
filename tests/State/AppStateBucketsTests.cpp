#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

const QString bookmarksKey = u"vaultBookmarks"_s;
const QString currentKey = u"currentVaultPath"_s;

} // namespace

class AppStateBucketsTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pickedFolderIsAddedAndOpened();
    void cancellingThePanelChangesNothing();
    void addingTheSameFolderTwiceKeepsOneBookmark();
    void folderThatCannotBeBookmarkedIsOpenedButNotRegistered();
    void bucketsKeepTheOrderOfTheirAddition();
    void bucketsAndTheOpenOneAreBackAfterARestart();
    void vanishedOpenBucketGivesWayToTheFirstThatResolves();
    void vanishedBucketStaysStoredUntilTheListIsRewritten();
    void legacyBookmarkIsMigratedAndOpened();
    void legacyBookmarkIsIgnoredBesideTheList();
    void switchingOpensTreeAndStoresTheBucket();
    void removingTheOnlyBucketLeavesNothingOpen();
    void removingTheOpenBucketOpensTheFirstOfTheOthers();
    void removingAnotherBucketKeepsTheOpenOne();
    void removedBucketIsForgottenButItsFilesStay();
    void removingTheListsOwnElementIsSafe();
    void bucketThatDisappearsWhileOpenIsShownEmpty();
    void unusableStoredValuesGiveNoBuckets_data();
    void unusableStoredValuesGiveNoBuckets();
    void brokenBookmarksAreSkipped();
    void aFileLiesInTheOpenBucketOrElseInTheFirstThatHoldsIt();
    void theBucketOfAFileIsOpenedForThisTimeOnly();
};

void AppStateBucketsTests::pickedFolderIsAddedAndOpened()
{
    const Bucket notes({{"A.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    desktop.panels.answer = notes.root();

    state.pickVault();

    QCOMPARE(desktop.panels.shown,
             QStringList{u"Välj bucket|Välj en mapp som ska fungera som din bucket."_s});
    QCOMPARE(state.vaults(), std::vector{notes.root()});
    QCOMPARE(state.vaultURL(), notes.root());
    QCOMPARE(state.fileTree().size(), 1);
}

void AppStateBucketsTests::cancellingThePanelChangesNothing()
{
    FakeServices desktop;
    AppState state(desktop.services());

    state.pickVault();

    QVERIFY(state.vaults().empty());
    QVERIFY(!state.vaultURL());
    QVERIFY(desktop.defaults.values.isEmpty());
}

void AppStateBucketsTests::addingTheSameFolderTwiceKeepsOneBookmark()
{
    const Bucket notes;
    FakeServices desktop;
    AppState state(desktop.services());

    state.addVault(notes.root());
    state.addVault(notes.root());

    QCOMPARE(state.vaults().size(), 1);
    QCOMPARE(desktop.defaults.dataList(bookmarksKey)->size(), 1);
}

void AppStateBucketsTests::folderThatCannotBeBookmarkedIsOpenedButNotRegistered()
{
    const Bucket notes;
    FakeServices desktop;
    AppState state(desktop.services());
    const FileURL missing = notes.folder(u"Saknas"_s);

    state.addVault(missing);

    QVERIFY(state.vaults().empty());
    QVERIFY(!desktop.defaults.dataList(bookmarksKey));
    QCOMPARE(state.vaultURL(), missing);
    QVERIFY(state.fileTree().empty());
}

void AppStateBucketsTests::bucketsKeepTheOrderOfTheirAddition()
{
    const Bucket notes({{"Ö/", ""}, {"A/", ""}, {"M/", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    const std::vector added{notes.folder(u"Ö"_s), notes.folder(u"A"_s), notes.folder(u"M"_s)};

    for (const FileURL& folder : added)
        state.addVault(folder);

    QCOMPARE(state.vaults(), added);
    QCOMPARE(AppState(desktop.services()).vaults(), added);
}

void AppStateBucketsTests::bucketsAndTheOpenOneAreBackAfterARestart()
{
    const Bucket first({{"A.md", ""}});
    const Bucket second({{"B.md", ""}});
    FakeServices desktop;
    {
        AppState earlier(desktop.services());
        earlier.addVault(first.root());
        earlier.addVault(second.root());
    }

    const AppState state(desktop.services());

    QCOMPARE(state.vaults(), (std::vector{first.root(), second.root()}));
    QCOMPARE(state.vaultURL(), second.root());
    QCOMPARE(state.fileTree().front().url, second.file(u"B.md"_s));
}

void AppStateBucketsTests::vanishedOpenBucketGivesWayToTheFirstThatResolves()
{
    const Bucket first;
    FakeServices desktop;
    {
        const Bucket second;
        AppState earlier(desktop.services());
        earlier.addVault(first.root());
        earlier.addVault(second.root());
    }

    const AppState state(desktop.services());

    QCOMPARE(state.vaults(), std::vector{first.root()});
    QCOMPARE(state.vaultURL(), first.root());
}

void AppStateBucketsTests::vanishedBucketStaysStoredUntilTheListIsRewritten()
{
    const Bucket first;
    const Bucket third;
    FakeServices desktop;
    {
        const Bucket second;
        AppState earlier(desktop.services());
        earlier.addVault(first.root());
        earlier.addVault(second.root());
        earlier.addVault(third.root());
    }
    AppState state(desktop.services());
    QCOMPARE(state.vaults().size(), 2);
    QCOMPARE(desktop.defaults.dataList(bookmarksKey)->size(), 3);

    state.removeBucket(first.root());

    QCOMPARE(desktop.defaults.dataList(bookmarksKey), QByteArrayList{third.root().bytes()});
}

void AppStateBucketsTests::legacyBookmarkIsMigratedAndOpened()
{
    const Bucket notes({{"A.md", ""}});
    FakeServices desktop;
    desktop.defaults.setData(u"vaultBookmark"_s, notes.root().bytes());

    const AppState state(desktop.services());

    QCOMPARE(desktop.defaults.dataList(bookmarksKey), QByteArrayList{notes.root().bytes()});
    QCOMPARE(desktop.defaults.data(u"vaultBookmark"_s), notes.root().bytes());
    QCOMPARE(state.vaultURL(), notes.root());
    QCOMPARE(state.fileTree().size(), 1);
}

void AppStateBucketsTests::legacyBookmarkIsIgnoredBesideTheList()
{
    const Bucket old;
    const Bucket notes;
    FakeServices desktop;
    desktop.defaults.setData(u"vaultBookmark"_s, old.root().bytes());
    desktop.defaults.setDataList(bookmarksKey, {notes.root().bytes()});

    QCOMPARE(AppState(desktop.services()).vaults(), std::vector{notes.root()});
}

void AppStateBucketsTests::switchingOpensTreeAndStoresTheBucket()
{
    const Bucket first({{"A.md", ""}});
    const Bucket second({{"B.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(first.root());
    state.addVault(second.root());
    const QSignalSpy vault(&state, &AppState::vaultURLChanged);
    const QSignalSpy tree(&state, &AppState::fileTreeChanged);

    state.switchVault(first.root());

    QCOMPARE(state.fileTree().front().url, first.file(u"A.md"_s));
    QCOMPARE(desktop.defaults.string(currentKey), first.root().path());
    QCOMPARE(vault.count(), 1);
    QCOMPARE(tree.count(), 1);
}

void AppStateBucketsTests::removingTheOnlyBucketLeavesNothingOpen()
{
    const Bucket notes({{"A.md", ""}, {"Mapp/", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(notes.root());
    state.setSelectedFile(notes.file(u"A.md"_s));
    state.setSelectedFolder(notes.folder(u"Mapp"_s));

    state.removeBucket(notes.root());

    QVERIFY(state.vaults().empty());
    QVERIFY(!state.vaultURL());
    QVERIFY(state.fileTree().empty());
    QVERIFY(!state.selectedFile());
    QVERIFY(!state.selectedFolder());
    QVERIFY(!desktop.defaults.values.contains(currentKey));
    QVERIFY(desktop.defaults.dataList(bookmarksKey)->isEmpty());
}

void AppStateBucketsTests::removingTheOpenBucketOpensTheFirstOfTheOthers()
{
    const Bucket first({{"A.md", ""}});
    const Bucket second;
    const Bucket third;
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(first.root());
    state.setSelectedFile(first.file(u"A.md"_s));
    state.addVault(second.root());
    state.addVault(third.root());

    state.removeBucket(third.root());

    QCOMPARE(state.vaultURL(), first.root());
    QCOMPARE(state.selectedFile(), first.file(u"A.md"_s));
    QCOMPARE(desktop.defaults.string(currentKey), first.root().path());
}

void AppStateBucketsTests::removingAnotherBucketKeepsTheOpenOne()
{
    const Bucket first;
    const Bucket second({{"B.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(first.root());
    state.addVault(second.root());
    state.setSelectedFile(second.file(u"B.md"_s));

    state.removeBucket(first.root());

    QCOMPARE(state.vaults(), std::vector{second.root()});
    QCOMPARE(state.vaultURL(), second.root());
    QCOMPARE(state.selectedFile(), second.file(u"B.md"_s));
}

void AppStateBucketsTests::removedBucketIsForgottenButItsFilesStay()
{
    const Bucket first({{"A.md", "text"}});
    const Bucket second;
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(second.root());
    state.addVault(first.root());
    state.setSelectedFile(first.file(u"A.md"_s));

    state.removeBucket(first.root());

    QVERIFY(!state.loadUIStates().contains(first.root().path()));
    QCOMPARE(first.read(u"A.md"_s), QByteArray("text"));
}

void AppStateBucketsTests::removingTheListsOwnElementIsSafe()
{
    const Bucket first;
    const Bucket second;
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(first.root());
    state.addVault(second.root());

    state.removeBucket(state.vaults().front());

    QCOMPARE(state.vaults(), std::vector{second.root()});
    QCOMPARE(state.vaultURL(), second.root());
}

void AppStateBucketsTests::bucketThatDisappearsWhileOpenIsShownEmpty()
{
    FakeServices desktop;
    AppState state(desktop.services());
    {
        const Bucket notes({{"A.md", ""}});
        state.addVault(notes.root());
        state.setSelectedFile(notes.file(u"A.md"_s));
    }

    state.reloadTree();

    QVERIFY(state.vaultURL());
    QVERIFY(state.fileTree().empty());
    QVERIFY(state.selectedFile());
}

void AppStateBucketsTests::unusableStoredValuesGiveNoBuckets_data()
{
    using Value = MemoryDefaults::Value;
    QTest::addColumn<Value>("bookmarks");

    QTest::newRow("data for the list") << Value(QByteArray("/tmp"));
    QTest::newRow("a text for the list") << Value(u"/tmp"_s);
    QTest::newRow("a number for the list") << Value(7.0);
    QTest::newRow("an empty list") << Value(QByteArrayList());
    QTest::newRow("bookmarks of nothing") << Value(QByteArrayList{"", "\xff\xfe", "{\"broken"});
    QTest::newRow("a huge bookmark") << Value(QByteArrayList{QByteArray(30000000, 'x')});
}

void AppStateBucketsTests::unusableStoredValuesGiveNoBuckets()
{
    QFETCH(const MemoryDefaults::Value, bookmarks);
    FakeServices desktop;
    desktop.defaults.values[bookmarksKey] = bookmarks;
    desktop.defaults.setNumber(currentKey, 7);

    const AppState state(desktop.services());

    QVERIFY(state.vaults().empty());
    QVERIFY(!state.vaultURL());
}

void AppStateBucketsTests::brokenBookmarksAreSkipped()
{
    const Bucket notes;
    FakeServices desktop;
    desktop.defaults.setDataList(bookmarksKey, {"nonsense", notes.root().bytes(), ""});
    desktop.defaults.setData(currentKey, "no text");

    const AppState state(desktop.services());

    QCOMPARE(state.vaults(), std::vector{notes.root()});
    QCOMPARE(state.vaultURL(), notes.root());
}

void AppStateBucketsTests::aFileLiesInTheOpenBucketOrElseInTheFirstThatHoldsIt()
{
    const Bucket outer({{"Inre/A.md", ""}, {"B.md", ""}});
    const FileURL inner = outer.folder(u"Inre"_s);
    const Bucket other({{"C.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(outer.root());
    state.addVault(inner);

    QCOMPARE(state.bucketHolding(outer.file(u"Inre/A.md"_s)), inner);
    QCOMPARE(state.bucketHolding(outer.file(u"B.md"_s)), outer.root());
    QCOMPARE(state.bucketHolding(other.file(u"C.md"_s)), std::nullopt);
    state.switchVault(other.root());
    QCOMPARE(state.bucketHolding(outer.file(u"Inre/A.md"_s)), outer.root());
}

void AppStateBucketsTests::theBucketOfAFileIsOpenedForThisTimeOnly()
{
    const Bucket first({{"A.md", ""}});
    const Bucket second({{"B.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(first.root());
    state.addVault(second.root());

    state.openBucketOf(first.file(u"A.md"_s));
    QCOMPARE(state.vaultURL(), first.root());
    QCOMPARE(state.fileTree().size(), 1U);
    QCOMPARE(desktop.defaults.string(currentKey), second.root().path());

    state.openBucketOf(FileURL::file(u"/annanstans/C.md"_s));
    QCOMPARE(state.vaultURL(), std::nullopt);
    QCOMPARE(desktop.defaults.string(currentKey), second.root().path());
}

QTEST_GUILESS_MAIN(AppStateBucketsTests)
#include "AppStateBucketsTests.moc"
