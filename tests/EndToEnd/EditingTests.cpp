#include "Editor/WebEditorController.h"
#include "Support/EditingWindow.h"
#include "Support/EngineTest.h"

#include <QRegularExpression>
#include <QTest>

#include <csignal>

namespace wendlore {

using namespace Qt::StringLiterals;

namespace {

/// A bucket that is open in the program's window.
struct Fixture final
{
    explicit Fixture(std::initializer_list<std::pair<const char*, const char*>> notes,
                     Pauses pauses = Pauses::brief)
        : bucket(notes)
        , desktop(pauses)
        , window(desktop)
    {
        window.state.addVault(bucket.root());
    }

    void open(const QString& path) { window.open(bucket.file(path)); }
    /// Names of the conflict copies, without what tells the time.
    [[nodiscard]] QStringList copies() const
    {
        QStringList names = bucket.names().filter(u" (konflikt "_s);
        for (QString& name : names)
            name.replace(QRegularExpression(uR"(\d{4}-\d\d-\d\d \d{4})"_s), u"då"_s);
        return names;
    }
    void waitFor(const QString& path, const QByteArray& bytes) const
    {
        WAIT_COMPARE(bucket.read(path), bytes);
    }

    Bucket bucket;
    RealDesktop desktop;
    EditingWindow window;
};

} // namespace

/// A person edits notes: the real page, engine, session and files.
class EditingTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void typedTextIsWrittenExactly_data();
    void typedTextIsWrittenExactly();
    void switchingWithinThePauseKeepsBothNotes();
    void switchingWithKeysUnderWayKeepsThemInTheirNote();
    void leavingTheWindowWritesAtOnce();
    void keysTypedJustBeforeClosingAreWritten();
    void aChangeFromOutsideIsShown();
    void aChangeFromOutsideWhileTypingMakesACopy();
    void aChangeToTheSameTextMakesNoCopy();
    void twoConflictsInOneMinuteMakeTwoCopies();
    void renamingWhileTypingKeepsTheWords();
    void aKilledPageComesBackWithTheText();
    void typographyAndZoomReachThePage();
    void aRestartFindsEverythingAgain();
    void aNoteThatIsTooLongStaysAsItIs();
    void notesThatCannotBeReadDoNoHarm_data();
    void notesThatCannotBeReadDoNoHarm();
};

void EditingTests::typedTextIsWrittenExactly_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");

    QTest::newRow("note") << QByteArray("# Rubrik\n\n* ett\n* två\n\n\n__fet__  \nslut\n")
                          << QByteArray("# Rubrik\n\n* ett\n* två\n\n\n__fet__  \nslut åäö\n");
    QTest::newRow("byte order mark and CRLF") << QByteArray("\xEF\xBB\xBF"
                                                            "a\r\n\r\nslut\r\n")
                                              << QByteArray("\xEF\xBB\xBF"
                                                            "a\r\n\r\nslut åäö\r\n");
    const QByteArray many = QByteArray("Ett stycke som är långt nog, med **fet** text.\n\n").repeated(1500);
    QTest::newRow("long") << many + "slut\n" << many + "slut åäö\n";
    QTest::newRow("empty") << QByteArray() << QByteArray(" åäö");
}

void EditingTests::typedTextIsWrittenExactly()
{
    QFETCH(const QByteArray, before);
    QFETCH(const QByteArray, after);
    Fixture f({});
    f.bucket.write(u"A.md"_s, before);
    f.open(u"A.md"_s);

    f.window.type(before.isEmpty() ? u"åäö"_s : u" åäö"_s);

    f.waitFor(u"A.md"_s, before.isEmpty() ? after.mid(1) : after);
    QCOMPARE(f.bucket.names(), QStringList{u"A.md"_s});
}

void EditingTests::switchingWithinThePauseKeepsBothNotes()
{
    Fixture f({{"A.md", "ett\n"}, {"B.md", "två\n"}}, Pauses::real);
    f.open(u"A.md"_s);
    f.window.type(u"x"_s);
    f.window.drain();

    f.open(u"B.md"_s);

    QCOMPARE(f.bucket.read(u"A.md"_s), "ettx\n");
    f.window.type(u"y"_s);
    f.waitFor(u"B.md"_s, "tvåy\n");
    QCOMPARE(f.bucket.read(u"A.md"_s), "ettx\n");
    QVERIFY(f.window.shownText().contains(u"tvåy"_s));
}

void EditingTests::switchingWithKeysUnderWayKeepsThemInTheirNote()
{
    Fixture f({{"A.md", "ett\n"}, {"B.md", "två\n"}}, Pauses::real);
    for (int round = 0; round < 5; ++round) {
        f.open(u"A.md"_s);
        f.window.type(QString(20, u'x'));
        f.open(u"B.md"_s);
        f.waitFor(u"A.md"_s, "ett" + QByteArray(20 * (round + 1), 'x') + "\n");
    }

    QCOMPARE(f.bucket.read(u"B.md"_s), "två\n");
    QCOMPARE(f.bucket.names(), (QStringList{u"A.md"_s, u"B.md"_s}));
}

void EditingTests::leavingTheWindowWritesAtOnce()
{
    Fixture f({{"A.md", "ett\n"}}, Pauses::real);
    f.open(u"A.md"_s);
    f.window.type(u"x"_s);
    f.window.drain();

    f.window.deactivate();

    QCOMPARE(f.bucket.read(u"A.md"_s), "ettx\n");
}

void EditingTests::keysTypedJustBeforeClosingAreWritten()
{
    Fixture f({{"A.md", "ett\n"}}, Pauses::real);
    f.open(u"A.md"_s);
    f.window.type(QString(20, u'x'));

    bool isSettled = false;
    f.window.view.session().settle([&isSettled] { isSettled = true; });
    WAIT_VERIFY(isSettled);

    QCOMPARE(f.bucket.read(u"A.md"_s), "ett" + QByteArray(20, 'x') + "\n");
}

void EditingTests::aChangeFromOutsideIsShown()
{
    Fixture f({{"A.md", "ett\n"}});
    f.open(u"A.md"_s);
    f.window.deactivate();
    f.bucket.write(u"A.md"_s, "deras\n");

    f.window.activate();

    WAIT_VERIFY(f.window.shownText().contains(u"deras"_s));
    f.window.type(u"x"_s);
    f.waitFor(u"A.md"_s, "derasx\n");
    QVERIFY(f.copies().isEmpty());
}

void EditingTests::aChangeFromOutsideWhileTypingMakesACopy()
{
    Fixture f({{"A.md", "ett\n"}});
    f.open(u"A.md"_s);
    f.window.type(u"x"_s);
    f.bucket.write(u"A.md"_s, "deras\n");

    f.waitFor(u"A.md"_s, "ettx\n");

    QCOMPARE(f.copies(), QStringList{u"A (konflikt Annas dator då).md"_s});
    const QString copy = f.bucket.names().filter(u"konflikt"_s).first();
    QCOMPARE(f.bucket.read(copy), "deras\n");
    QVERIFY(f.window.view.session().conflictNotice().contains(u"“"_s + copy + u"”"_s));
    QVERIFY(f.window.shownText().contains(u"ettx"_s));
}

void EditingTests::aChangeToTheSameTextMakesNoCopy()
{
    Fixture f({{"A.md", "ett\n"}}, Pauses::real);
    f.open(u"A.md"_s);
    f.window.type(u"x"_s);
    f.bucket.write(u"A.md"_s, "ettx\n");
    f.window.drain();

    f.window.deactivate();

    QCOMPARE(f.bucket.read(u"A.md"_s), "ettx\n");
    QVERIFY(f.copies().isEmpty());
    QVERIFY(f.window.view.session().conflictNotice().isEmpty());
}

void EditingTests::twoConflictsInOneMinuteMakeTwoCopies()
{
    Fixture f({{"A.md", "ett\n"}}, Pauses::real);
    f.open(u"A.md"_s);
    const QDateTime start = QDateTime::currentDateTime();
    for (const char* theirs : {"deras 1\n", "deras 2\n"}) {
        f.window.type(u"x"_s);
        f.window.drain();
        f.bucket.write(u"A.md"_s, theirs);
        f.window.view.session().flush();
    }

    const bool isOneMinute = start.time().minute() == QTime::currentTime().minute();
    const QString second =
        isOneMinute ? u"A (konflikt Annas dator då 2).md"_s : u"A (konflikt Annas dator då).md"_s;
    QStringList expected{u"A (konflikt Annas dator då).md"_s, second};
    expected.sort();
    QStringList found = f.copies();
    found.sort();
    QCOMPARE(found, expected);
    QCOMPARE(f.bucket.read(u"A.md"_s), "ettxx\n");
}

void EditingTests::renamingWhileTypingKeepsTheWords()
{
    Fixture f({{"A.md", "ett\n"}}, Pauses::real);
    f.open(u"A.md"_s);
    f.window.type(QString(10, u'x'));

    f.window.view.session().setTitle(u"B"_s);
    f.window.type(QString(10, u'y'));

    f.waitFor(u"B.md"_s, "ett" + QByteArray(10, 'x') + QByteArray(10, 'y') + "\n");
    QCOMPARE(f.bucket.names(), QStringList{u"B.md"_s});
    QCOMPARE(f.window.state.selectedFile(), f.bucket.file(u"B.md"_s));
}

void EditingTests::aKilledPageComesBackWithTheText()
{
    Fixture f({{"A.md", "ett\n"}});
    f.open(u"A.md"_s);
    f.window.type(u"före"_s);
    f.window.drain();

    QCOMPARE(::kill(static_cast<pid_t>(f.desktop.engine->processId()), SIGKILL), 0);
    WAIT_VERIFY(!f.window.state.editorController().isReady());
    WAIT_VERIFY(f.window.state.editorController().isReady());

    WAIT_VERIFY(f.window.shownText().contains(u"ettföre"_s));
    f.window.type(u"efter"_s);
    f.waitFor(u"A.md"_s, "ettföreefter\n");
    QVERIFY(f.copies().isEmpty());
}

void EditingTests::typographyAndZoomReachThePage()
{
    Fixture f({{"A.md", "ett\n"}});
    f.open(u"A.md"_s);
    auto theme = TypographyTheme::standard();
    theme.body.fontSize = 21;

    f.window.state.applyTypographyTheme(theme);
    f.window.state.setEditorZoom(1.5);

    // Engines differ in how they spell a number ("21.0px").
    const QString number = u"parseFloat(getComputedStyle(document.documentElement).getPropertyValue('%1'))"_s;
    WAIT_COMPARE(f.window.value(number.arg(u"--body-size"_s)).toDouble(), 21.0);
    WAIT_COMPARE(f.window.value(number.arg(u"--editor-zoom"_s)).toDouble(), 1.5);
}

void EditingTests::aRestartFindsEverythingAgain()
{
    const Bucket bucket({{"A.md", "ett\n"}, {"B.md", "två\n"}});
    RealDesktop desktop;
    {
        EditingWindow window(desktop);
        window.state.addVault(bucket.root());
        window.open(bucket.file(u"B.md"_s));
        window.state.setEditorZoom(1.3);
        window.state.setTheme(AppTheme::dark);
        auto theme = TypographyTheme::standard();
        theme.h1.fontSize = 40;
        window.state.applyTypographyTheme(theme);
    }

    EditingWindow window(desktop);

    QCOMPARE(window.state.vaultURL(), bucket.root());
    QCOMPARE(window.state.selectedFile(), bucket.file(u"B.md"_s));
    QCOMPARE(window.state.editorZoom(), 1.3);
    QCOMPARE(window.state.theme(), AppTheme::dark);
    QCOMPARE(window.state.typographyTheme().h1.fontSize, 40.0);
    WAIT_VERIFY(window.shownText().contains(u"två"_s));
}

void EditingTests::aNoteThatIsTooLongStaysAsItIs()
{
    const QByteArray bytes = QByteArray("Rad med åäö\n").repeated(3'600'000);
    Fixture f({{"B.md", "två\n"}});
    f.bucket.write(u"A.md"_s, bytes);

    f.open(u"A.md"_s);
    WAIT_VERIFY(f.window.value(u"document.querySelector('.too-long') !== null"_s).toBool());
    f.window.type(u"x"_s);
    f.open(u"B.md"_s);
    f.window.type(u"!"_s);

    f.waitFor(u"B.md"_s, "två!\n");
    QVERIFY(f.bucket.read(u"A.md"_s) == bytes);
}

void EditingTests::notesThatCannotBeReadDoNoHarm_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("exists");

    QTest::newRow("vanished") << QByteArray() << false;
    QTest::newRow("not UTF-8") << QByteArray("M\xF6te") << true;
    QTest::newRow("0 bytes") << QByteArray() << true;
}

void EditingTests::notesThatCannotBeReadDoNoHarm()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const bool, exists);
    Fixture f({{"B.md", "två\n"}});
    if (exists)
        f.bucket.write(u"A.md"_s, bytes);
    f.open(u"B.md"_s);

    f.open(u"A.md"_s);
    QVERIFY(!f.window.shownText().contains(u"två"_s));
    f.window.type(u"x"_s);

    f.waitFor(u"A.md"_s, "x");
    QCOMPARE(f.bucket.read(u"B.md"_s), "två\n");
    const QDir recovered(f.desktop.recovered.directory().path());
    QCOMPARE(recovered.entryList(QDir::Files).size(), bytes.isEmpty() ? 0 : 1);
}

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(EditingTests)
#include "EditingTests.moc"
