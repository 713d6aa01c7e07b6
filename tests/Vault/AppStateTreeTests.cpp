#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class AppStateTreeTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reloadingWithoutABucketLeavesAnEmptyTree();
    void reloadingShowsWhatIsOnDiskNow();
    void reloadingAnUnchangedBucketTellsNobody();
    void reloadingKeepsTheSelection();
    void aReadingInTheBackgroundShowsWhatItFound();
    void whatWasReadMeanwhileIsNotTakenBack();
    void anotherBucketIsReadInstead();
    void newItemsGoToTheSelectedFolderThenTheFilesThenTheBucket();
    void foldersThatAreGoneReceiveNothing();
};

void AppStateTreeTests::reloadingWithoutABucketLeavesAnEmptyTree()
{
    FakeServices desktop;
    AppState state(desktop.services());

    state.reloadTree();

    QVERIFY(state.fileTree().empty());
    QVERIFY(!state.activeDirectory());
}

void AppStateTreeTests::reloadingShowsWhatIsOnDiskNow()
{
    const Bucket bucket({{"A.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(bucket.root());
    bucket.write(u"B.md"_s, {});
    const QSignalSpy changed(&state, &AppState::fileTreeChanged);

    state.reloadTree();

    QCOMPARE(state.fileTree().size(), 2);
    QCOMPARE(changed.count(), 1);
}

void AppStateTreeTests::reloadingAnUnchangedBucketTellsNobody()
{
    const Bucket bucket({{"A.md", ""}, {"Mapp/B.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(bucket.root());
    const QSignalSpy changed(&state, &AppState::fileTreeChanged);

    state.reloadTree();

    QCOMPARE(changed.count(), 0);
}

void AppStateTreeTests::reloadingKeepsTheSelection()
{
    const Bucket bucket({{"A.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(bucket.root());
    state.setSelectedFile(bucket.file(u"A.md"_s));
    bucket.remove(u"A.md"_s);

    state.reloadTree();

    QCOMPARE(state.selectedFile(), bucket.file(u"A.md"_s));
}

void AppStateTreeTests::aReadingInTheBackgroundShowsWhatItFound()
{
    const Bucket bucket({{"A.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(bucket.root());
    const QSignalSpy changed(&state, &AppState::fileTreeChanged);
    int readings = 0;
    const auto read = [&] {
        state.reloadTreeInBackground([&readings] { ++readings; });
        QCOMPARE(desktop.scheduler.pendingBackgroundWork(), 1);
        desktop.scheduler.finishBackgroundWork();
    };

    read();
    QCOMPARE(changed.count(), 0);
    bucket.write(u"B.md"_s, {});
    read();

    QCOMPARE(changed.count(), 1);
    QCOMPARE(state.fileTree().size(), 2);
    QCOMPARE(readings, 2);
}

void AppStateTreeTests::whatWasReadMeanwhileIsNotTakenBack()
{
    const Bucket bucket({{"A.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(bucket.root());
    bool isRead = false;

    state.reloadTreeInBackground([&isRead] { isRead = true; });
    state.newNote();
    QVERIFY(desktop.scheduler.finishNextBackgroundWork());
    QVERIFY(!isRead); // it may be the older one
    desktop.scheduler.finishBackgroundWork();

    QVERIFY(isRead);
    QCOMPARE(state.fileTree().size(), 2);
}

void AppStateTreeTests::anotherBucketIsReadInstead()
{
    const Bucket first({{"A.md", ""}, {"B.md", ""}});
    const Bucket second({{"C.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(first.root());
    bool isRead = false;

    first.write(u"D.md"_s, {});
    state.reloadTreeInBackground([&isRead] { isRead = true; });
    state.addVault(second.root());
    desktop.scheduler.finishBackgroundWork();

    QVERIFY(isRead);
    QCOMPARE(state.fileTree().size(), 1);
}

void AppStateTreeTests::newItemsGoToTheSelectedFolderThenTheFilesThenTheBucket()
{
    const Bucket bucket({{"Mapp/A.md", ""}, {"Annan/", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(bucket.root());
    QCOMPARE(state.activeDirectory(), bucket.root());

    state.setSelectedFile(bucket.file(u"Mapp/A.md"_s));
    QCOMPARE(state.activeDirectory(), bucket.folder(u"Mapp"_s));

    state.setSelectedFolder(bucket.folder(u"Annan"_s));
    QCOMPARE(state.activeDirectory(), bucket.folder(u"Annan"_s));
}

void AppStateTreeTests::foldersThatAreGoneReceiveNothing()
{
    const Bucket bucket({{"Mapp/A.md", ""}, {"Annan/", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(bucket.root());
    state.setSelectedFile(bucket.file(u"Mapp/A.md"_s));
    state.setSelectedFolder(bucket.folder(u"Annan"_s));

    QVERIFY(QDir(bucket.folder(u"Annan"_s).path()).removeRecursively());
    QCOMPARE(state.activeDirectory(), bucket.folder(u"Mapp"_s));
    QVERIFY(QDir(bucket.folder(u"Mapp"_s).path()).removeRecursively());
    QCOMPARE(state.activeDirectory(), bucket.root());
}

QTEST_GUILESS_MAIN(AppStateTreeTests)
#include "AppStateTreeTests.moc"
