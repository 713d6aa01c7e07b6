#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

const QString uiStatesKey = u"wendloreVaultUIState"_s;

/// A state that was left with the bucket open and, where given, a selection.
void leaveWith(FakeServices& desktop, const FileURL& bucket, const std::optional<FileURL>& file,
               const std::optional<FileURL>& folder = std::nullopt)
{
    AppState state(desktop.services());
    state.addVault(bucket);
    state.setSelectedFile(file);
    state.setSelectedFolder(folder);
}

} // namespace

class AppStatePersistenceTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void selectionIsBackAfterARestart();
    void eachBucketRemembersItsOwnSelection();
    void selectionKeepsTheSidebarWidth();
    void restoredSelectionEqualsTheTreesRows();
    void selectionOutsideTheTreeIsRestored();
    void deletedFileIsNotRestoredAndForgotten();
    void deletedFolderIsNotRestored();
    void fileThatBecameAFolderIsNotRestored();
    void folderThatBecameAFileIsNotRestored();
    void newBucketOpensWithTheLastSidebarWidth();
    void bucketsOwnSidebarWidthWins();
    void noSidebarWidthWithoutAnyStored_data();
    void noSidebarWidthWithoutAnyStored();
    void savingAWidthKeepsTheSelection();
    void widthThatIsNoNumberIsNotSaved();
    void unreadableUIStateGivesNoSelection_data();
    void unreadableUIStateGivesNoSelection();
    void unreadableUIStateIsReplacedByTheNextSave();
    void hugeUIStateIsKept();
};

void AppStatePersistenceTests::selectionIsBackAfterARestart()
{
    const Bucket notes({{"Mapp/A.md", ""}});
    FakeServices desktop;
    leaveWith(desktop, notes.root(), notes.file(u"Mapp/A.md"_s), notes.folder(u"Mapp"_s));

    const AppState state(desktop.services());

    QCOMPARE(state.vaultURL(), notes.root());
    QCOMPARE(state.selectedFile(), notes.file(u"Mapp/A.md"_s));
    QCOMPARE(state.selectedFolder(), notes.folder(u"Mapp"_s));
}

void AppStatePersistenceTests::eachBucketRemembersItsOwnSelection()
{
    const Bucket first({{"A.md", ""}});
    const Bucket second({{"B.md", ""}});
    FakeServices desktop;
    leaveWith(desktop, first.root(), first.file(u"A.md"_s));
    leaveWith(desktop, second.root(), second.file(u"B.md"_s));
    AppState state(desktop.services());

    state.switchVault(first.root());
    QCOMPARE(state.selectedFile(), first.file(u"A.md"_s));
    state.switchVault(second.root());
    QCOMPARE(state.selectedFile(), second.file(u"B.md"_s));
}

void AppStatePersistenceTests::selectionKeepsTheSidebarWidth()
{
    const Bucket notes({{"A.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(notes.root());
    state.saveSidebarWidth(300, notes.root());

    state.setSelectedFile(notes.file(u"A.md"_s));

    QCOMPARE(state.loadUIStates()[notes.root().path()],
             (VaultUIState{notes.file(u"A.md"_s).path(), std::nullopt, 300.0}));
}

void AppStatePersistenceTests::restoredSelectionEqualsTheTreesRows()
{
    const Bucket notes({{"Rapport.rtfd/", ""}, {"Mapp/", ""}});
    FakeServices desktop;
    leaveWith(desktop, notes.root(), std::nullopt, notes.folder(u"Mapp"_s));

    const AppState state(desktop.services());

    QCOMPARE(state.selectedFolder(), state.fileTree().front().url);
}

void AppStatePersistenceTests::selectionOutsideTheTreeIsRestored()
{
    const Bucket notes;
    const Bucket elsewhere({{".dold/A.md", ""}});
    FakeServices desktop;
    leaveWith(desktop, notes.root(), elsewhere.file(u".dold/A.md"_s), elsewhere.folder(u".dold"_s));

    const AppState state(desktop.services());

    QCOMPARE(state.selectedFile(), elsewhere.file(u".dold/A.md"_s));
    QCOMPARE(state.selectedFolder(), elsewhere.folder(u".dold"_s));
}

void AppStatePersistenceTests::deletedFileIsNotRestoredAndForgotten()
{
    const Bucket notes({{"A.md", ""}});
    FakeServices desktop;
    leaveWith(desktop, notes.root(), notes.file(u"A.md"_s));
    notes.remove(u"A.md"_s);

    const AppState state(desktop.services());

    QVERIFY(!state.selectedFile());
    QVERIFY(!state.loadUIStates()[notes.root().path()].selectedFilePath);
}

void AppStatePersistenceTests::deletedFolderIsNotRestored()
{
    const Bucket notes({{"A.md", ""}, {"Mapp/", ""}});
    FakeServices desktop;
    leaveWith(desktop, notes.root(), notes.file(u"A.md"_s), notes.folder(u"Mapp"_s));
    QVERIFY(QDir(notes.root().path()).rmdir(u"Mapp"_s));

    const AppState state(desktop.services());

    QVERIFY(!state.selectedFolder());
    QCOMPARE(state.selectedFile(), notes.file(u"A.md"_s));
    QCOMPARE(state.loadUIStates()[notes.root().path()],
             (VaultUIState{notes.file(u"A.md"_s).path(), std::nullopt, std::nullopt}));
}

void AppStatePersistenceTests::fileThatBecameAFolderIsNotRestored()
{
    const Bucket notes({{"A.md", ""}});
    FakeServices desktop;
    leaveWith(desktop, notes.root(), notes.file(u"A.md"_s));
    notes.remove(u"A.md"_s);
    notes.write(u"A.md/"_s, {});

    QVERIFY(!AppState(desktop.services()).selectedFile());
}

void AppStatePersistenceTests::folderThatBecameAFileIsNotRestored()
{
    const Bucket notes({{"Mapp/", ""}});
    FakeServices desktop;
    leaveWith(desktop, notes.root(), std::nullopt, notes.folder(u"Mapp"_s));
    QVERIFY(QDir(notes.root().path()).rmdir(u"Mapp"_s));
    notes.write(u"Mapp"_s, "text");

    QVERIFY(!AppState(desktop.services()).selectedFolder());
}

void AppStatePersistenceTests::newBucketOpensWithTheLastSidebarWidth()
{
    const Bucket first;
    const Bucket second;
    FakeServices desktop;
    AppState state(desktop.services());
    state.saveSidebarWidth(310.5, first.root());

    QCOMPARE(state.savedSidebarWidth(second.root()), 310.5);
}

void AppStatePersistenceTests::bucketsOwnSidebarWidthWins()
{
    const Bucket first;
    const Bucket second;
    FakeServices desktop;
    AppState state(desktop.services());
    state.saveSidebarWidth(310.5, first.root());
    state.saveSidebarWidth(200, second.root());

    QCOMPARE(state.savedSidebarWidth(first.root()), 310.5);
    QCOMPARE(state.savedSidebarWidth(second.root()), 200.0);
}

void AppStatePersistenceTests::noSidebarWidthWithoutAnyStored_data()
{
    QTest::addColumn<double>("lastWidth");

    QTest::newRow("none") << 0.0;
    QTest::newRow("negative") << -20.0;
}

void AppStatePersistenceTests::noSidebarWidthWithoutAnyStored()
{
    QFETCH(const double, lastWidth);
    const Bucket notes;
    FakeServices desktop;
    desktop.defaults.setNumber(u"wendloreSidebarWidthDefault"_s, lastWidth);

    QVERIFY(!AppState(desktop.services()).savedSidebarWidth(notes.root()));
}

void AppStatePersistenceTests::savingAWidthKeepsTheSelection()
{
    const Bucket notes({{"A.md", ""}});
    FakeServices desktop;
    leaveWith(desktop, notes.root(), notes.file(u"A.md"_s), notes.root());
    AppState state(desktop.services());

    state.saveSidebarWidth(250, notes.root());

    QCOMPARE(state.loadUIStates()[notes.root().path()],
             (VaultUIState{notes.file(u"A.md"_s).path(), notes.root().path(), 250.0}));
}

void AppStatePersistenceTests::widthThatIsNoNumberIsNotSaved()
{
    const Bucket notes;
    FakeServices desktop;
    AppState state(desktop.services());
    state.saveSidebarWidth(250, notes.root());

    state.saveSidebarWidth(qQNaN(), notes.root());

    QCOMPARE(state.savedSidebarWidth(notes.root()), 250.0);
}

void AppStatePersistenceTests::unreadableUIStateGivesNoSelection_data()
{
    QTest::addColumn<QByteArray>("json");

    QTest::newRow("broken") << QByteArray("{\"/a");
    QTest::newRow("another shape") << QByteArray("[1, 2]");
    QTest::newRow("another type within") << QByteArray(R"({"/a":{"selectedFilePath":1}})");
    QTest::newRow("huge and broken") << QByteArray(20000000, '{');
}

void AppStatePersistenceTests::unreadableUIStateGivesNoSelection()
{
    QFETCH(const QByteArray, json);
    const Bucket notes({{"A.md", ""}});
    FakeServices desktop;
    leaveWith(desktop, notes.root(), notes.file(u"A.md"_s));
    desktop.defaults.setData(uiStatesKey, json);

    const AppState state(desktop.services());

    QCOMPARE(state.vaultURL(), notes.root());
    QVERIFY(!state.selectedFile());
    QVERIFY(!state.savedSidebarWidth(notes.root()));
}

void AppStatePersistenceTests::unreadableUIStateIsReplacedByTheNextSave()
{
    const Bucket notes({{"A.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(notes.root());
    desktop.defaults.setString(uiStatesKey, u"a text where data is expected"_s);

    state.setSelectedFile(notes.file(u"A.md"_s));

    QCOMPARE(state.loadUIStates(),
             (VaultUIStates{{notes.root().path(), {notes.file(u"A.md"_s).path(), {}, {}}}}));
}

void AppStatePersistenceTests::hugeUIStateIsKept()
{
    const Bucket notes({{"A.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    VaultUIStates states;
    for (int number = 0; number < 20000; ++number)
        states[u"/buckets/%1"_s.arg(number)] = {u"/buckets/%1/A.md"_s.arg(number), {}, 200.0};
    state.saveUIStates(states);

    state.addVault(notes.root());
    state.setSelectedFile(notes.file(u"A.md"_s));

    QCOMPARE(state.loadUIStates().size(), states.size() + 1);
    QCOMPARE(state.loadUIStates()[u"/buckets/7"_s], states[u"/buckets/7"_s]);
}

QTEST_GUILESS_MAIN(AppStatePersistenceTests)
#include "AppStatePersistenceTests.moc"
