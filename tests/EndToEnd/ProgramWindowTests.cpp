#include "Wendlores/MainWindow.h"

#include "Editor/WebEditorController.h"
#include "Fakes/Bucket.h"
#include "State/AppState.h"
#include "Support/EngineTest.h"
#include "Support/RealDesktop.h"
#include "Support/Window.h"

#include <QElapsedTimer>
#include <QTreeView>
#include <QWebEngineView>

namespace wendlore {

using namespace Qt::StringLiterals;

namespace {

/// The program's window on the real disk and in the real engine, as one run of the program.
struct Run final
{
    explicit Run(RealDesktop& real)
        : desktop(real)
    {
        window.resize(1000, 700);
        window.show();
        window.activateWindow();
    }

    [[nodiscard]] QWebEngineView& web() const { return *window.findChild<QWebEngineView*>(); }

    /// What `expression` is in the page.
    [[nodiscard]] QVariant inPage(const QString& expression) const
    {
        QVariant result;
        bool isDone = false;
        web().page()->runJavaScript(expression, [&](const QVariant& value) {
            result = value;
            isDone = true;
        });
        return waitFor([&] { return isDone; }) ? result : QVariant();
    }
    [[nodiscard]] QString shownText() const { return inPage(u"document.body.innerText"_s).toString(); }
    [[nodiscard]] bool shows(const QString& text) const
    {
        // The engine takes seconds to answer a question that it was asked before the page was there.
        const auto isThere = [&] { return state.editorController().isReady() && shownText().contains(text); };
        return waitFor(isThere);
    }

    /// Clicks the row of a note in the tree, as a user does.
    [[nodiscard]] bool clickNote(const QString& name) const
    {
        auto* tree = window.findChild<QTreeView*>();
        const auto rows = tree->model()->match(tree->model()->index(0, 0), Qt::DisplayRole, name, 1,
                                               Qt::MatchExactly | Qt::MatchRecursive);
        if (rows.isEmpty())
            return false;
        tree->scrollTo(rows.first());
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(rows.first()).center());
        return true;
    }
    /// Opens the bucket and the note of that name; false when the page does not show `text`.
    [[nodiscard]] bool opens(const Bucket& bucket, const QString& name, const QString& text)
    {
        state.addVault(bucket.root());
        return clickNote(name) && shows(text);
    }
    /// Clicks into the note's first block, goes to its end and types.
    void typeAtFirstBlocksEnd(const QString& text) const
    {
        const QVariantList place =
            inPage(u"(box => [box.left + 5, box.top + box.height / 2])"
                   "(document.querySelector('.ProseMirror > *').getBoundingClientRect())"_s)
                .toList();
        QCOMPARE(place.size(), 2);
        QWidget* keys = web().focusProxy();
        QTest::mouseClick(keys, Qt::LeftButton, {}, QPoint(place[0].toInt(), place[1].toInt()));
        WAIT_VERIFY(inPage(u"document.hasFocus()"_s).toBool());
        QTest::keyClick(keys, Qt::Key_End);
        QTest::keyClicks(keys, text);
    }

    RealDesktop& desktop;
    AppState state{desktop.services()};
    MainWindow window{state};
};

bool holds(const Bucket& bucket, const QString& note, const QByteArray& text)
{
    return waitFor([&] { return bucket.read(note) == text; });
}

} // namespace

class ProgramWindowTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }
    void typedWordsReachTheDiskAfterThePauseAndNothingElseChanges();
    void switchingNotesWithinThePauseWritesEachItsOwn();
    void undoLeavesANoteAloneThatIsNotShown();
    void theNextStartShowsWhatTheLastRunLeft();
    void closingTheWindowWritesTheLastKeys();
};

void ProgramWindowTests::typedWordsReachTheDiskAfterThePauseAndNothingElseChanges()
{
    const QByteArray rest = "\r\n\r\n* ett\r\n+ två\r\n\r\n\r\nslut  \r\n";
    const Bucket bucket;
    bucket.write(u"Not.md"_s, "Början" + rest);
    RealDesktop desktop;
    Run run(desktop);
    QVERIFY(run.opens(bucket, u"Not"_s, u"Början"_s));

    run.typeAtFirstBlocksEnd(u" och mer"_s);
    QElapsedTimer sinceLastKey;
    sinceLastKey.start();

    QVERIFY(holds(bucket, u"Not.md"_s, "Början och mer" + rest));
    QVERIFY(sinceLastKey.elapsed() >= 1100);
}

void ProgramWindowTests::switchingNotesWithinThePauseWritesEachItsOwn()
{
    const Bucket bucket({{"A.md", "första\n"}, {"B.md", "andra\n"}});
    RealDesktop desktop;
    Run run(desktop);
    QVERIFY(run.opens(bucket, u"A"_s, u"första"_s));

    run.typeAtFirstBlocksEnd(u" x"_s);
    QVERIFY(run.clickNote(u"B"_s));
    QVERIFY(run.shows(u"andra"_s));
    run.typeAtFirstBlocksEnd(u" y"_s);

    QVERIFY(holds(bucket, u"A.md"_s, "första x\n"));
    QVERIFY(holds(bucket, u"B.md"_s, "andra y\n"));
}

void ProgramWindowTests::undoLeavesANoteAloneThatIsNotShown()
{
    const Bucket bucket({{"A.md", "text\n"}, {"B.csv", "a,b\n"}});
    RealDesktop desktop(Pauses::brief);
    Run run(desktop);
    QVERIFY(run.opens(bucket, u"A"_s, u"text"_s));
    run.typeAtFirstBlocksEnd(u" x"_s);
    QVERIFY(holds(bucket, u"A.md"_s, "text x\n"));

    QVERIFY(run.clickNote(u"B"_s));
    run.window.setFocus();
    QTest::keyClick(&run.window, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(run.inPage(u"document.querySelector('.ProseMirror').innerText.trim()"_s).toString(),
             u"text x"_s);

    QVERIFY(run.clickNote(u"A"_s));
    run.web().setFocus();
    QTest::keyClick(&run.window, Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(holds(bucket, u"A.md"_s, "text\n"));
}

void ProgramWindowTests::theNextStartShowsWhatTheLastRunLeft()
{
    const Bucket bucket({{"A.md", "första\n"}, {"Mapp/B.md", "andra\n"}});
    RealDesktop desktop;
    {
        Run run(desktop);
        run.state.addVault(bucket.root());
        run.state.setSelectedFile(bucket.file(u"Mapp/B.md"_s));
        QVERIFY(run.shows(u"andra"_s));
        run.state.setEditorZoom(1.4);
        run.state.setTheme(AppTheme::dark);
    }

    Run next(desktop);

    QVERIFY(next.shows(u"andra"_s));
    QCOMPARE(next.state.vaultURL(), std::optional(bucket.root()));
    QCOMPARE(next.state.selectedFile(), std::optional(bucket.file(u"Mapp/B.md"_s)));
    QCOMPARE(next.state.editorZoom(), 1.4);
    QCOMPARE(next.state.theme(), AppTheme::dark);
    WAIT_COMPARE(
        next.inPage(u"document.documentElement.style.getPropertyValue('--editor-zoom')"_s).toString(),
        u"1.4"_s);
}

void ProgramWindowTests::closingTheWindowWritesTheLastKeys()
{
    const Bucket bucket({{"A.md", "text\n"}});
    RealDesktop desktop;
    Run run(desktop);
    QVERIFY(run.opens(bucket, u"A"_s, u"text"_s));

    run.typeAtFirstBlocksEnd(u" sista"_s);
    run.window.close();

    QVERIFY(holds(bucket, u"A.md"_s, "text sista\n"));
    QVERIFY(waitFor([&] { return !run.window.isVisible(); }));
}

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(ProgramWindowTests)
#include "ProgramWindowTests.moc"
