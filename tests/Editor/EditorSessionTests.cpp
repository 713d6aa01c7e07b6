#include "Editor/EditorSession.h"

#include "Fakes/EditingFixture.h"

#include <QJsonObject>
#include <QSignalSpy>
#include <QTest>

namespace wendlore {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString copyName = u"A (konflikt Annas dator 2025-03-14 0932).md"_s;
const QString secondCopyName = u"A (konflikt Annas dator 2025-03-14 0932 2).md"_s;

} // namespace

class EditorSessionTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void openingShowsTheNote();
    void openingAsksForThePlaceholdersDownload();
    void openingTakesThePageOver();
    void aNoteThatCannotBeReadAsTextIsShownEmpty_data();
    void aNoteThatCannotBeReadAsTextIsShownEmpty();
    void aReadThatEndsAfterTheNoteWasLeftIsDropped();
    void aNewNoteTakesTheFocus();
    void anotherNoteLeavesTheFocusAlone();

    void typingIsWrittenOnceAfterThePause();
    void switchingWritesTheFirstNoteToItsOwnPlace();
    void leavingTheWindowWritesAtOnce();
    void leavingTheNoteWritesAtOnce();
    void theEndOfTheSessionWrites();
    void theBytesOnDiskAreExactlyTheText_data();
    void theBytesOnDiskAreExactlyTheText();
    void aDeletedNoteIsMadeAgainByAnEdit();

    void anExternalChangeIsShownWhenTheWindowBecomesActive();
    void anExternalChangeWaitsForThePendingSave();
    void anUnchangedNoteIsNotSetAgain();
    void aChangeToTheSameTextMakesNoCopy();
    void aChangeWhileTypingMakesAConflictCopy();
    void twoConflictsInOneMinuteAreCounted();
    void aConflictLeavesTheEditorAlone();
    void theNoticeIsDismissed();

    void aTitleRenamesTheNote();
    void aBlankTitleChangesNothing();
    void typographyReachesThePage();
    void theAppearanceReachesThePage();
    void linksOpenAtTheRightPlace_data();
    void linksOpenAtTheRightPlace();
};

void EditorSessionTests::openingShowsTheNote()
{
    EditingFixture f({{"A.md", "# Hej\r\n"}});
    QSignalSpy loaded(f.session.get(), &EditorSession::loaded);

    f.open(u"A.md"_s);

    QCOMPARE(f.page->scripts.last(), uR"(window.VaultEditor.setContent("# Hej\r\n"))"_s);
    QCOMPARE(f.session->title(), u"A"_s);
    QCOMPARE(f.session->fileURL(), f.bucket.file(u"A.md"_s));
    QCOMPARE(loaded.count(), 1);
}

void EditorSessionTests::openingAsksForThePlaceholdersDownload()
{
    EditingFixture f({{"A.md", "a"}});

    f.open(u"A.md"_s);

    QCOMPARE(f.desktop.coordinator.downloads, QList{f.bucket.file(u"A.md"_s)});
}

void EditorSessionTests::openingTakesThePageOver()
{
    EditingFixture f({{"A.md", "a"}});
    f.session->setDark(true);
    f.page->scripts.clear();

    f.open(u"A.md"_s);

    QCOMPARE(f.page->scripts.size(), 4);
    QCOMPARE(f.page->scripts[0], u"window.VaultEditor.setTheme(\"dark\")"_s);
    QVERIFY(f.page->scripts[1].contains(u"--body-font"_s));
    QVERIFY(f.page->scripts[2].contains(u"--editor-zoom"_s));
    QCOMPARE(f.state->editorController().vaultRoot(), f.bucket.root());
}

void EditorSessionTests::aNoteThatCannotBeReadAsTextIsShownEmpty_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("exists");

    QTest::newRow("vanished") << QByteArray() << false;
    QTest::newRow("not UTF-8") << QByteArray("M\xF6te") << true;
    QTest::newRow("empty") << QByteArray() << true;
}

void EditorSessionTests::aNoteThatCannotBeReadAsTextIsShownEmpty()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const bool, exists);
    EditingFixture f({{"B.md", "b"}});
    if (exists)
        f.bucket.write(u"A.md"_s, bytes);
    f.open(u"B.md"_s);

    f.open(u"A.md"_s);

    QCOMPARE(f.shown(), u""_s);
    QCOMPARE(f.bucket.read(u"A.md"_s), bytes);
    QCOMPARE(f.bucket.exists(u"A.md"_s), exists);
}

void EditorSessionTests::aReadThatEndsAfterTheNoteWasLeftIsDropped()
{
    EditingFixture f({{"A.md", "a"}, {"B.md", "b"}});
    f.session->open(f.bucket.file(u"A.md"_s));
    f.session->open(f.bucket.file(u"B.md"_s));

    f.desktop.scheduler.finishBackgroundWork();

    QCOMPARE(f.shown(), u"b"_s);
    QVERIFY(!f.page->scripts.contains(u"window.VaultEditor.setContent(\"a\")"_s));
}

void EditorSessionTests::aNewNoteTakesTheFocus()
{
    EditingFixture f({{"A.md", ""}});
    f.state->setPendingFocusFile(f.bucket.file(u"A.md"_s));

    f.open(u"A.md"_s);

    QCOMPARE(f.page->scripts.last(), u"window.VaultEditor.focus()"_s);
    QCOMPARE(f.state->pendingFocusFile(), std::nullopt);
}

void EditorSessionTests::anotherNoteLeavesTheFocusAlone()
{
    EditingFixture f({{"A.md", ""}, {"B.md", ""}});
    f.state->setPendingFocusFile(f.bucket.file(u"B.md"_s));

    f.open(u"A.md"_s);

    QVERIFY(!f.page->scripts.contains(u"window.VaultEditor.focus()"_s));
    QCOMPARE(f.state->pendingFocusFile(), f.bucket.file(u"B.md"_s));
}

void EditorSessionTests::typingIsWrittenOnceAfterThePause()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);

    QString text = u"a"_s;
    for (int key = 0; key < 50; ++key) {
        f.type(text += u'x');
        f.wait(100ms);
        QCOMPARE(f.bucket.read(u"A.md"_s), "a");
    }
    f.wait(1099ms);
    QCOMPARE(f.bucket.read(u"A.md"_s), "a");
    f.wait(1ms);

    QCOMPARE(f.bucket.read(u"A.md"_s), text.toUtf8());
    QCOMPARE(f.desktop.scheduler.pendingTasks(), 0);
}

void EditorSessionTests::switchingWritesTheFirstNoteToItsOwnPlace()
{
    EditingFixture f({{"A.md", "a"}, {"B.md", "b"}});
    f.open(u"A.md"_s);
    f.type(u"a1"_s);

    f.open(u"B.md"_s);
    f.wait(2s);

    QCOMPARE(f.bucket.read(u"A.md"_s), "a1");
    QCOMPARE(f.bucket.read(u"B.md"_s), "b");
}

void EditorSessionTests::leavingTheWindowWritesAtOnce()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    f.type(u"a1"_s);

    f.deactivate();

    QCOMPARE(f.bucket.read(u"A.md"_s), "a1");
    QCOMPARE(f.desktop.scheduler.pendingTasks(), 0);
}

void EditorSessionTests::leavingTheNoteWritesAtOnce()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    f.type(u"a1"_s);

    f.session->close();

    QCOMPARE(f.bucket.read(u"A.md"_s), "a1");
    QCOMPARE(f.session->fileURL(), std::nullopt);
}

void EditorSessionTests::theEndOfTheSessionWrites()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    f.type(u"a1"_s);

    f.session.reset();

    QCOMPARE(f.bucket.read(u"A.md"_s), "a1");
}

void EditorSessionTests::theBytesOnDiskAreExactlyTheText_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF# Hej\n");
    QTest::newRow("CRLF and no final newline") << QByteArray("a\r\nb");
    QTest::newRow("NUL") << QByteArray("a\0b\n", 4);
    QTest::newRow("50 MB") << QByteArray("Rad med åäö\n").repeated(4'000'000);
}

void EditorSessionTests::theBytesOnDiskAreExactlyTheText()
{
    QFETCH(const QByteArray, bytes);
    EditingFixture f({});
    f.bucket.write(u"A.md"_s, bytes);
    f.open(u"A.md"_s);
    QCOMPARE(f.shown().toUtf8(), bytes);

    f.type(f.shown() + u'x');
    f.deactivate();

    QCOMPARE(f.bucket.read(u"A.md"_s), bytes + 'x');
    QCOMPARE(f.bucket.names(), QStringList{u"A.md"_s});
}

void EditorSessionTests::aDeletedNoteIsMadeAgainByAnEdit()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    f.bucket.remove(u"A.md"_s);

    f.type(u"a1"_s);
    f.deactivate();

    QCOMPARE(f.bucket.read(u"A.md"_s), "a1");
}

void EditorSessionTests::anExternalChangeIsShownWhenTheWindowBecomesActive()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    f.deactivate();
    f.bucket.write(u"A.md"_s, "deras");

    f.activate();

    QCOMPARE(f.shown(), u"deras"_s);
    QCOMPARE(f.bucket.names(), QStringList{u"A.md"_s});
    f.type(u"deras och mitt"_s);
    f.deactivate();
    QCOMPARE(f.bucket.read(u"A.md"_s), "deras och mitt");
    QCOMPARE(f.bucket.names(), QStringList{u"A.md"_s});
}

void EditorSessionTests::anExternalChangeWaitsForThePendingSave()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    f.type(u"a1"_s);
    f.bucket.write(u"A.md"_s, "deras");

    f.activate();

    QCOMPARE(f.shown(), u"a1"_s);
}

void EditorSessionTests::anUnchangedNoteIsNotSetAgain()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    f.page->scripts.clear();

    f.activate();

    QVERIFY(f.page->scripts.isEmpty());
}

void EditorSessionTests::aChangeToTheSameTextMakesNoCopy()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    f.type(u"samma"_s);
    f.bucket.write(u"A.md"_s, "samma");

    f.wait(1200ms);

    QCOMPARE(f.bucket.names(), QStringList{u"A.md"_s});
    QVERIFY(f.session->conflictNotice().isEmpty());
}

void EditorSessionTests::aChangeWhileTypingMakesAConflictCopy()
{
    EditingFixture f({{"A.md", "a"}});
    QSignalSpy noticed(f.session.get(), &EditorSession::conflictNoticeChanged);
    f.open(u"A.md"_s);
    f.type(u"vårt"_s);
    f.bucket.write(u"A.md"_s, "deras");

    f.wait(1200ms);

    QCOMPARE(f.bucket.read(u"A.md"_s), "vårt");
    QCOMPARE(f.bucket.read(copyName), "deras");
    QCOMPARE(f.session->conflictNotice(),
             u"Noten ändrades av någon annan medan du redigerade. Deras version sparades som “%1” så inget "
             "gick förlorat."_s.arg(copyName));
    QCOMPARE(noticed.count(), 1);
    QVERIFY(std::ranges::find(f.state->fileTree(), f.bucket.file(copyName), &FileNode::url) !=
            f.state->fileTree().end());
}

void EditorSessionTests::twoConflictsInOneMinuteAreCounted()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    f.type(u"vårt 1"_s);
    f.bucket.write(u"A.md"_s, "deras 1");
    f.wait(1200ms);

    f.type(u"vårt 2"_s);
    f.bucket.write(u"A.md"_s, "deras 2");
    f.wait(1200ms);

    QCOMPARE(f.bucket.read(u"A.md"_s), "vårt 2");
    QCOMPARE(f.bucket.read(copyName), "deras 1");
    QCOMPARE(f.bucket.read(secondCopyName), "deras 2");
}

void EditorSessionTests::aConflictLeavesTheEditorAlone()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    f.page->scripts.clear();
    f.type(u"vårt"_s);
    f.bucket.write(u"A.md"_s, "deras");

    f.wait(1200ms);

    QVERIFY(f.page->scripts.isEmpty());
}

void EditorSessionTests::theNoticeIsDismissed()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    f.type(u"vårt"_s);
    f.bucket.write(u"A.md"_s, "deras");
    f.deactivate();

    f.session->dismissConflictNotice();

    QVERIFY(f.session->conflictNotice().isEmpty());
}

void EditorSessionTests::aTitleRenamesTheNote()
{
    EditingFixture f({{"A.md", "a"}});
    f.state->setSelectedFile(f.bucket.file(u"A.md"_s));
    f.open(u"A.md"_s);
    f.type(u"a1"_s);

    f.session->setTitle(u" Möte \t"_s);

    QCOMPARE(f.bucket.names(), QStringList{u"Möte.md"_s});
    QCOMPARE(f.session->title(), u"Möte"_s);
    QCOMPARE(f.session->fileURL(), f.bucket.file(u"Möte.md"_s));
    QCOMPARE(f.state->selectedFile(), f.bucket.file(u"Möte.md"_s));
    f.type(u"a12"_s);
    f.wait(1200ms);
    QCOMPARE(f.bucket.names(), QStringList{u"Möte.md"_s});
    QCOMPARE(f.bucket.read(u"Möte.md"_s), "a12");
}

void EditorSessionTests::aBlankTitleChangesNothing()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    QSignalSpy titleChanged(f.session.get(), &EditorSession::titleChanged);

    f.session->setTitle(u" \t"_s);

    QCOMPARE(f.bucket.names(), QStringList{u"A.md"_s});
    QCOMPARE(f.session->title(), u"A"_s);
    QCOMPARE(titleChanged.count(), 1);
}

void EditorSessionTests::typographyReachesThePage()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    auto theme = TypographyTheme::standard();
    theme.body.fontSize = 17;

    f.state->applyTypographyTheme(theme);

    QVERIFY(f.page->scripts.last().contains(u"'--body-size','17.0px'"_s));
}

void EditorSessionTests::theAppearanceReachesThePage()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);

    f.session->setDark(true);

    QCOMPARE(f.page->scripts.last(), u"window.VaultEditor.setTheme(\"dark\")"_s);
}

void EditorSessionTests::linksOpenAtTheRightPlace_data()
{
    QTest::addColumn<QString>("href");
    QTest::addColumn<bool>("isWiki");
    QTest::addColumn<bool>("isAddress");

    QTest::newRow("web") << u"https://example.org/a?b#c"_s << false << true;
    QTest::newRow("web with Swedish letters") << u"https://sv.example.org/Åre"_s << true << true;
    QTest::newRow("web with a blank") << u"https://example.org/a b"_s << false << true;
    QTest::newRow("mail") << u"mailto:anna@example.org"_s << false << true;
    QTest::newRow("relative") << u"../B.md"_s << false << false;
    QTest::newRow("blank") << u"B%20C.md"_s << false << false;
    QTest::newRow("wiki name") << u"B"_s << true << false;
    QTest::newRow("wiki name with a colon") << u"Plan: våren"_s << true << false;
    QTest::newRow("wiki name with a Swedish colon") << u"Möte:våren"_s << true << false;
    QTest::newRow("empty") << u""_s << false << false;
}

void EditorSessionTests::linksOpenAtTheRightPlace()
{
    QFETCH(const QString, href);
    QFETCH(const bool, isWiki);
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);

    f.page->post(u"openLink"_s, QJsonObject{{u"href"_s, href}, {u"wiki"_s, isWiki}});

    QTEST(f.desktop.workspace.addresses == QList{QUrl(href)}, "isAddress");
}

} // namespace wendlore

QTEST_GUILESS_MAIN(wendlore::EditorSessionTests)
#include "EditorSessionTests.moc"
