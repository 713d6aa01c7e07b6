#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class AppStateHistoryTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void restoredSelectionIsTheFirstEntry();
    void goingBackShowsAndKeepsThePreviousFile();
    void goingBackRecordsNothing();
    void goingBackSkipsFilesThatVanishedFromDisk();
    void goingBackToNothingLeavesTheSelection();
    void observersOfAStepMaySelectAnotherFile();
    void switchingBucketsKeepsTheHistory();
};

void AppStateHistoryTests::restoredSelectionIsTheFirstEntry()
{
    const Bucket notes({{"A.md", ""}});
    FakeServices desktop;
    {
        AppState earlier(desktop.services());
        earlier.addVault(notes.root());
        earlier.setSelectedFile(notes.file(u"A.md"_s));
    }

    const AppState state(desktop.services());

    QCOMPARE(state.history().entries(), std::vector{notes.file(u"A.md"_s)});
    QCOMPARE(state.history().index(), 0);
}

void AppStateHistoryTests::goingBackShowsAndKeepsThePreviousFile()
{
    const Bucket notes({{"A.md", ""}, {"B.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(notes.root());
    state.setSelectedFile(notes.file(u"A.md"_s));
    state.setSelectedFile(notes.file(u"B.md"_s));
    const QSignalSpy selected(&state, &AppState::selectedFileChanged);
    const QSignalSpy history(&state, &AppState::historyChanged);

    state.goBack();

    QCOMPARE(state.selectedFile(), notes.file(u"A.md"_s));
    QCOMPARE(state.loadUIStates()[notes.root().path()].selectedFilePath, notes.file(u"A.md"_s).path());
    QCOMPARE(selected.count(), 1);
    QCOMPARE(history.count(), 1);

    state.goForward();

    QCOMPARE(state.selectedFile(), notes.file(u"B.md"_s));
}

void AppStateHistoryTests::goingBackRecordsNothing()
{
    const Bucket notes({{"A.md", ""}, {"B.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.setSelectedFile(notes.file(u"A.md"_s));
    state.setSelectedFile(notes.file(u"B.md"_s));

    state.goBack();

    QCOMPARE(state.history().entries().size(), 2);
    QCOMPARE(state.history().index(), 0);
    QVERIFY(state.history().canGoForward());
}

void AppStateHistoryTests::goingBackSkipsFilesThatVanishedFromDisk()
{
    const Bucket notes({{"A.md", ""}, {"B.md", ""}, {"C.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    for (const QString& name : {u"A.md"_s, u"B.md"_s, u"C.md"_s})
        state.setSelectedFile(notes.file(name));
    notes.remove(u"B.md"_s);

    state.goBack();

    QCOMPARE(state.selectedFile(), notes.file(u"A.md"_s));
    QCOMPARE(state.history().entries(), (std::vector{notes.file(u"A.md"_s), notes.file(u"C.md"_s)}));
}

void AppStateHistoryTests::goingBackToNothingLeavesTheSelection()
{
    const Bucket notes({{"A.md", ""}, {"B.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.setSelectedFile(notes.file(u"A.md"_s));
    state.setSelectedFile(notes.file(u"B.md"_s));
    notes.remove(u"A.md"_s);
    const QSignalSpy selected(&state, &AppState::selectedFileChanged);
    const QSignalSpy history(&state, &AppState::historyChanged);

    state.goBack();

    QCOMPARE(state.selectedFile(), notes.file(u"B.md"_s));
    QCOMPARE(state.history().index(), -1);
    QCOMPARE(selected.count(), 0);
    QCOMPARE(history.count(), 1);
}

void AppStateHistoryTests::observersOfAStepMaySelectAnotherFile()
{
    const Bucket notes({{"A.md", ""}, {"B.md", ""}, {"C.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.setSelectedFile(notes.file(u"A.md"_s));
    state.setSelectedFile(notes.file(u"B.md"_s));
    connect(&state, &AppState::selectedFileChanged, this, [&] {
        if (state.selectedFile() == notes.file(u"A.md"_s))
            state.setSelectedFile(notes.file(u"C.md"_s));
    });

    state.goBack();

    QCOMPARE(state.selectedFile(), notes.file(u"C.md"_s));
    QCOMPARE(state.history().entries(), (std::vector{notes.file(u"A.md"_s), notes.file(u"C.md"_s)}));
}

void AppStateHistoryTests::switchingBucketsKeepsTheHistory()
{
    const Bucket first({{"A.md", ""}});
    const Bucket second({{"B.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(first.root());
    state.setSelectedFile(first.file(u"A.md"_s));
    state.addVault(second.root());
    state.setSelectedFile(second.file(u"B.md"_s));

    state.goBack();

    QCOMPARE(state.selectedFile(), first.file(u"A.md"_s));
    QCOMPARE(state.vaultURL(), second.root());
}

QTEST_GUILESS_MAIN(AppStateHistoryTests)
#include "AppStateHistoryTests.moc"
