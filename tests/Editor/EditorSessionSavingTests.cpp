#include "Editor/EditorSession.h"

#include "Fakes/EditingFixture.h"

#include <QTest>

namespace wendlore {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString copyOfA = u"A (konflikt Annas dator 2025-03-14 0932).md"_s;
const QString blockedFolder = u"Borta"_s;

} // namespace

/// Edits that arrive when the page or the disk has gone on already, and saves that fail.
class EditorSessionSavingTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLateEditIsWrittenToTheNoteItWasTypedIn();
    void aLateEditLeavesThePendingSaveOfTheNewNoteAlone();
    void aLateEditIsCheckedAgainstItsOwnBaseline();
    void anEditMadeWhileTheNextNoteIsReadGoesToTheOldNote();
    void anEditMadeAfterTheNoteWasLeftIsWritten();
    void anEditThatCrossesAReloadWins();
    void severalEditsThatCrossAReloadMakeOneCopy();
    void editsOnBothSidesOfAReloadAreKept();
    void anEditMadeWhileTheNoteIsReadAgainIsWrittenFirst();
    void aReadThatAWriteOvertookIsDoneAgain();
    void anExternalChangeDuringAReadIsSeen();
    void goingBackToANoteKeepsItsLateEdits();

    void lateEditsFollowARenamedNote();
    void lateEditsFollowARenamedFolder();
    void pendingEditsAreWrittenBeforeAMove();
    void aRenameWhileTheNoteIsReadReadsTheNewPlace();
    void lateEditsOfADeletedNoteAreKept();
    void aNoteThatCameBackTakesItsLateEdits();
    void aDeletedNoteThatWasWrittenAgainTakesItsLateEdits();
    void theTrashGetsTheLatestText();
    void anotherBucketsNotesAreNotTouched();

    void theLastReportedTextSurvivesACrashOfThePage();
    void textThatCannotBeWrittenIsKept();
    void textThatFitsNowhereStaysPendingUntilItFits();
    void anEmptiedEditorsTextIsKept_data();
    void anEmptiedEditorsTextIsKept();
    void bytesThatAreNoTextAreKeptBeforeAnEditReplacesThem();
};

void EditorSessionSavingTests::aLateEditIsWrittenToTheNoteItWasTypedIn()
{
    EditingFixture f({{"A.md", "a"}, {"B.md", "b"}});
    f.open(u"A.md"_s);
    const auto shownA = f.page->generation;
    f.open(u"B.md"_s);

    f.typeLate(u"a1"_s, shownA);

    QCOMPARE(f.bucket.read(u"A.md"_s), "a1");
    f.wait(2s);
    QCOMPARE(f.bucket.read(u"B.md"_s), "b");
    QCOMPARE(f.shown(), u"b"_s);
}

void EditorSessionSavingTests::aLateEditLeavesThePendingSaveOfTheNewNoteAlone()
{
    EditingFixture f({{"A.md", "a"}, {"B.md", "b"}});
    f.open(u"A.md"_s);
    const auto shownA = f.page->generation;
    f.session->open(f.bucket.file(u"B.md"_s));
    f.desktop.coordinator.afterNextRead = [&f, shownA] { f.typeLate(u"a1"_s, shownA); };
    f.desktop.scheduler.finishBackgroundWork();
    f.type(u"b1"_s);

    f.wait(1199ms);
    QCOMPARE(f.bucket.read(u"B.md"_s), "b");
    f.wait(1ms);

    QCOMPARE(f.bucket.read(u"A.md"_s), "a1");
    QCOMPARE(f.bucket.read(u"B.md"_s), "b1");
}

void EditorSessionSavingTests::aLateEditIsCheckedAgainstItsOwnBaseline()
{
    EditingFixture f({{"A.md", "a"}, {"B.md", "b"}});
    f.open(u"A.md"_s);
    const auto shownA = f.page->generation;
    f.open(u"B.md"_s);
    // The text of the new note in the old one's place is somebody else's change like any other.
    f.bucket.write(u"A.md"_s, "b");

    f.typeLate(u"a1"_s, shownA);

    QCOMPARE(f.bucket.read(u"A.md"_s), "a1");
    QCOMPARE(f.bucket.read(copyOfA), "b");
    QVERIFY(f.session->conflictNotice().contains(copyOfA));
}

void EditorSessionSavingTests::anEditMadeWhileTheNextNoteIsReadGoesToTheOldNote()
{
    EditingFixture f({{"A.md", "a"}, {"B.md", "b"}});
    f.open(u"A.md"_s);
    f.session->open(f.bucket.file(u"B.md"_s));

    f.type(u"a1"_s);
    f.type(u"a12"_s);

    QCOMPARE(f.bucket.read(u"A.md"_s), "a12");
    f.desktop.scheduler.finishBackgroundWork();
    QCOMPARE(f.shown(), u"b"_s);
    f.wait(2s);
    QCOMPARE(f.bucket.read(u"B.md"_s), "b");
}

void EditorSessionSavingTests::anEditMadeAfterTheNoteWasLeftIsWritten()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    f.session->close();

    f.type(u"a1"_s);

    QCOMPARE(f.bucket.read(u"A.md"_s), "a1");
}

void EditorSessionSavingTests::anEditThatCrossesAReloadWins()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    const auto before = f.page->generation;
    f.bucket.write(u"A.md"_s, "deras");
    f.activate();
    QCOMPARE(f.shown(), u"deras"_s);

    f.typeLate(u"a1"_s, before);

    QCOMPARE(f.bucket.read(u"A.md"_s), "a1");
    QCOMPARE(f.bucket.read(copyOfA), "deras");
    QCOMPARE(f.page->scripts.last(), u"window.VaultEditor.setContent(\"a1\")"_s);
    f.type(u"a12"_s);
    f.deactivate();
    QCOMPARE(f.bucket.read(u"A.md"_s), "a12");
    QCOMPARE(f.bucket.names().size(), 2);
}

void EditorSessionSavingTests::severalEditsThatCrossAReloadMakeOneCopy()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    const auto before = f.page->generation;
    f.bucket.write(u"A.md"_s, "deras");
    f.activate();

    f.typeLate(u"a1"_s, before);
    f.typeLate(u"a12"_s, before);

    QCOMPARE(f.bucket.names(), (QStringList{copyOfA, u"A.md"_s}));
    QCOMPARE(f.bucket.read(u"A.md"_s), "a12");
    QCOMPARE(f.shown(), u"a12"_s);
}

void EditorSessionSavingTests::editsOnBothSidesOfAReloadAreKept()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    const auto before = f.page->generation;
    f.bucket.write(u"A.md"_s, "deras");
    f.activate();
    const auto after = f.page->generation;

    f.typeLate(u"a1"_s, before);
    f.typeLate(u"deras2"_s, after);

    QCOMPARE(f.bucket.read(u"A.md"_s), "deras2");
    QCOMPARE(f.bucket.read(copyOfA), "deras");
    QCOMPARE(f.bucket.read(u"A (konflikt Annas dator 2025-03-14 0932 2).md"_s), "a1");
    QCOMPARE(f.shown(), u"deras2"_s);
}

void EditorSessionSavingTests::anEditMadeWhileTheNoteIsReadAgainIsWrittenFirst()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    f.session->close();
    f.session->open(f.bucket.file(u"A.md"_s));

    f.type(u"a1"_s);
    f.desktop.scheduler.finishBackgroundWork();

    QCOMPARE(f.bucket.read(u"A.md"_s), "a1");
    QCOMPARE(f.shown(), u"a1"_s);
    QCOMPARE(f.bucket.names(), QStringList{u"A.md"_s});
    QVERIFY(!f.session->isLoading());
}

void EditorSessionSavingTests::aReadThatAWriteOvertookIsDoneAgain()
{
    EditingFixture f({{"A.md", "a"}, {"B.md", "b"}});
    f.open(u"A.md"_s);
    const auto shownA = f.page->generation;
    f.open(u"B.md"_s);
    f.session->open(f.bucket.file(u"A.md"_s));
    f.desktop.coordinator.afterNextRead = [&f, shownA] { f.typeLate(u"a1"_s, shownA); };

    f.desktop.scheduler.finishBackgroundWork();

    QCOMPARE(f.shown(), u"a1"_s);
    QCOMPARE(f.bucket.read(u"A.md"_s), "a1");
}

void EditorSessionSavingTests::anExternalChangeDuringAReadIsSeen()
{
    EditingFixture f({{"A.md", "a"}});
    f.session->open(f.bucket.file(u"A.md"_s));
    f.desktop.coordinator.afterNextRead = [&f] {
        f.bucket.write(u"A.md"_s, "deras");
        f.activate();
    };

    f.desktop.scheduler.finishBackgroundWork();

    QCOMPARE(f.shown(), u"deras"_s);
}

void EditorSessionSavingTests::goingBackToANoteKeepsItsLateEdits()
{
    EditingFixture f({{"A.md", "a"}, {"B.md", "b"}});
    f.open(u"A.md"_s);
    const auto shownA = f.page->generation;
    f.open(u"B.md"_s);
    f.open(u"A.md"_s);

    f.typeLate(u"a1"_s, shownA);

    QCOMPARE(f.bucket.read(u"A.md"_s), "a1");
    QCOMPARE(f.shown(), u"a1"_s);
    QCOMPARE(f.bucket.names(), (QStringList{u"A.md"_s, u"B.md"_s}));
}

void EditorSessionSavingTests::lateEditsFollowARenamedNote()
{
    EditingFixture f({{"A.md", "a"}, {"B.md", "b"}});
    f.open(u"A.md"_s);
    const auto shownA = f.page->generation;
    f.open(u"B.md"_s);
    f.state->renameFile(f.bucket.file(u"A.md"_s), u"C"_s);

    f.typeLate(u"a1"_s, shownA);

    QCOMPARE(f.bucket.names(), (QStringList{u"B.md"_s, u"C.md"_s}));
    QCOMPARE(f.bucket.read(u"C.md"_s), "a1");
}

void EditorSessionSavingTests::lateEditsFollowARenamedFolder()
{
    EditingFixture f({{"Arkiv/A.md", "a"}});
    f.open(u"Arkiv/A.md"_s);
    const FileURL from = f.bucket.folder(u"Arkiv"_s);
    const FileURL to = f.bucket.folder(u"Gamla"_s);
    QVERIFY(QFile::rename(from.path(), to.path()));
    Q_EMIT f.state->didMove(from, to);

    f.type(u"a1"_s);
    f.wait(1200ms);

    QCOMPARE(f.bucket.names(), QStringList{u"Gamla"_s});
    QCOMPARE(f.bucket.read(u"Gamla/A.md"_s), "a1");
    QCOMPARE(f.session->fileURL(), f.bucket.file(u"Gamla/A.md"_s));
}

void EditorSessionSavingTests::pendingEditsAreWrittenBeforeAMove()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    f.type(u"a1"_s);

    Q_EMIT f.state->aboutToMove(f.bucket.file(u"A.md"_s));

    QCOMPARE(f.bucket.read(u"A.md"_s), "a1");
}

void EditorSessionSavingTests::aRenameWhileTheNoteIsReadReadsTheNewPlace()
{
    EditingFixture f({{"A.md", "a"}});
    f.session->open(f.bucket.file(u"A.md"_s));
    f.state->renameFile(f.bucket.file(u"A.md"_s), u"C"_s);

    f.desktop.scheduler.finishBackgroundWork();

    QCOMPARE(f.shown(), u"a"_s);
    QCOMPARE(f.session->title(), u"C"_s);
}

void EditorSessionSavingTests::lateEditsOfADeletedNoteAreKept()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    f.bucket.remove(u"A.md"_s);
    Q_EMIT f.state->didDelete(f.bucket.file(u"A.md"_s));
    f.session->close();

    f.type(u"a1"_s);

    QVERIFY(!f.bucket.exists(u"A.md"_s));
    QCOMPARE(f.recoveredTexts(), QList<QByteArray>{"a1"});
}

void EditorSessionSavingTests::aNoteThatCameBackTakesItsLateEdits()
{
    EditingFixture f({{"Ny not.md", ""}, {"B.md", "b"}});
    const FileURL note = f.bucket.file(u"Ny not.md"_s);
    f.open(u"Ny not.md"_s);
    f.bucket.remove(u"Ny not.md"_s);
    Q_EMIT f.state->didDelete(note);
    f.session->close();
    f.bucket.write(u"Ny not.md"_s, "");
    f.open(u"Ny not.md"_s);
    const auto shown = f.page->generation;
    f.open(u"B.md"_s);

    f.typeLate(u"hej"_s, shown);

    QCOMPARE(f.bucket.read(u"Ny not.md"_s), "hej");
    QCOMPARE(f.recoveredTexts(), QList<QByteArray>());
}

void EditorSessionSavingTests::aDeletedNoteThatWasWrittenAgainTakesItsLateEdits()
{
    EditingFixture f({{"A.md", "a"}, {"B.md", "b"}});
    f.open(u"A.md"_s);
    const auto shown = f.page->generation;
    f.bucket.remove(u"A.md"_s);
    Q_EMIT f.state->didDelete(f.bucket.file(u"A.md"_s));
    f.type(u"a1"_s);
    f.deactivate();
    f.open(u"B.md"_s);

    f.typeLate(u"a12"_s, shown);

    QCOMPARE(f.bucket.read(u"A.md"_s), "a12");
    QCOMPARE(f.recoveredTexts(), QList<QByteArray>());
}

void EditorSessionSavingTests::theTrashGetsTheLatestText()
{
    EditingFixture f({{"Arkiv/A.md", "a"}});
    f.open(u"Arkiv/A.md"_s);
    f.type(u"a1"_s);

    Q_EMIT f.state->aboutToMove(f.bucket.folder(u"Arkiv"_s));

    QCOMPARE(f.bucket.read(u"Arkiv/A.md"_s), "a1");
    QCOMPARE(f.desktop.scheduler.pendingTasks(), 0);
}

void EditorSessionSavingTests::anotherBucketsNotesAreNotTouched()
{
    EditingFixture f({{"A.md", "a"}});
    const Bucket other({{"A.md", "annan"}});
    f.open(u"A.md"_s);
    const auto shownA = f.page->generation;
    f.type(u"a1"_s);

    f.state->addVault(other.root());
    f.session->open(other.file(u"A.md"_s));
    f.desktop.scheduler.finishBackgroundWork();
    f.typeLate(u"a12"_s, shownA);

    QCOMPARE(f.bucket.read(u"A.md"_s), "a12");
    QCOMPARE(other.read(u"A.md"_s), "annan");
    QCOMPARE(f.shown(), u"annan"_s);
}

void EditorSessionSavingTests::theLastReportedTextSurvivesACrashOfThePage()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    f.type(u"a1"_s);

    f.page->terminateContentProcess();
    f.wait(300ms);
    f.page->post(u"ready"_s);

    QCOMPARE(f.page->scripts.last(), u"window.VaultEditor.setContent(\"a1\")"_s);
    f.wait(900ms);
    QCOMPARE(f.bucket.read(u"A.md"_s), "a1");
}

void EditorSessionSavingTests::textThatCannotBeWrittenIsKept()
{
    EditingFixture f({{"Borta/A.md", "a"}});
    f.open(u"Borta/A.md"_s);
    QVERIFY(QDir(f.bucket.folder(blockedFolder).path()).removeRecursively());

    f.type(u"a1"_s);
    f.wait(1200ms);

    QCOMPARE(f.recoveredTexts(), QList<QByteArray>{"a1"});
    QCOMPARE(f.desktop.scheduler.pendingTasks(), 0);
}

void EditorSessionSavingTests::textThatFitsNowhereStaysPendingUntilItFits()
{
    EditingFixture f({{"Borta/A.md", "a"}});
    f.open(u"Borta/A.md"_s);
    QVERIFY(QDir(f.bucket.folder(blockedFolder).path()).removeRecursively());
    QFile recovered(f.desktop.recovered.directory().path());
    QVERIFY(recovered.open(QIODevice::WriteOnly));
    f.type(u"a1"_s);
    f.wait(1200ms);
    f.activate();
    QCOMPARE(f.shown(), u"a1"_s);

    f.bucket.write(u"Borta/"_s, {});
    f.wait(1200ms);

    QCOMPARE(f.bucket.read(u"Borta/A.md"_s), "a1");
    QCOMPARE(f.desktop.scheduler.pendingTasks(), 0);
}

void EditorSessionSavingTests::anEmptiedEditorsTextIsKept_data()
{
    QTest::addColumn<QByteArray>("disk");
    QTest::addColumn<bool>("exists");

    QTest::newRow("vanished") << QByteArray() << false;
    QTest::newRow("emptied") << QByteArray() << true;
    QTest::newRow("not UTF-8") << QByteArray("M\xF6te") << true;
}

void EditorSessionSavingTests::anEmptiedEditorsTextIsKept()
{
    QFETCH(const QByteArray, disk);
    QFETCH(const bool, exists);
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    f.bucket.remove(u"A.md"_s);
    if (exists)
        f.bucket.write(u"A.md"_s, disk);

    f.activate();

    QCOMPARE(f.shown(), u""_s);
    QCOMPARE(f.recoveredTexts(), QList<QByteArray>{"a"});
    QCOMPARE(f.bucket.read(u"A.md"_s), disk);
}

void EditorSessionSavingTests::bytesThatAreNoTextAreKeptBeforeAnEditReplacesThem()
{
    EditingFixture f({{"A.md", "M\xF6te"}});
    f.open(u"A.md"_s);

    f.type(u"x"_s);
    f.deactivate();

    QCOMPARE(f.bucket.read(u"A.md"_s), "x");
    QCOMPARE(f.recoveredTexts(), QList<QByteArray>{"M\xF6te"});
    QCOMPARE(f.bucket.names(), QStringList{u"A.md"_s});
}

} // namespace wendlore

QTEST_GUILESS_MAIN(wendlore::EditorSessionSavingTests)
#include "EditorSessionSavingTests.moc"
