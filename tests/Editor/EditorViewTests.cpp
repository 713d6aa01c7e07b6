#include "Editor/EditorView.h"

#include "Editor/EditorBar.h"
#include "Editor/LinkDialog.h"
#include "Editor/WebEditorController.h"
#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"

#include <QTest>

namespace wendlore {

using namespace Qt::StringLiterals;

namespace {

struct Fixture final
{
    Fixture()
    {
        state.addVault(bucket.root());
        desktop.page->post(u"ready"_s);
        view.resize(600, 400);
        view.show();
        view.session().open(bucket.file(u"A.md"_s));
        desktop.scheduler.finishBackgroundWork();
        desktop.page->scripts.clear();
    }

    Bucket bucket{{"A.md", "a"}};
    FakeServices desktop;
    AppState state{desktop.services()};
    EditorView view{state};
};

} // namespace

class EditorViewTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void leavingTheWindowWrites();
    void comingBackToTheWindowShowsWhatChanged();
    void aDarkPaletteMakesThePageDark();
    void theToolbarStandsInsideWhereItIsAskedFor();
    void aKeyAsksForALink();
};

void EditorViewTests::leavingTheWindowWrites()
{
    Fixture f;
    f.view.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&f.view));
    f.desktop.page->post(u"changed"_s, u"a1"_s);

    QWidget other;
    other.resize(300, 200);
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));

    QCOMPARE(f.bucket.read(u"A.md"_s), "a1");
}

void EditorViewTests::comingBackToTheWindowShowsWhatChanged()
{
    Fixture f;
    QWidget other;
    other.resize(300, 200);
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    f.bucket.write(u"A.md"_s, "deras");

    f.view.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&f.view));

    QCOMPARE(f.state.editorController().desiredContent(), u"deras"_s);
}

void EditorViewTests::aDarkPaletteMakesThePageDark()
{
    Fixture f;
    QPalette dark = f.view.palette();
    dark.setColor(QPalette::Base, QColor(30, 30, 32));

    f.view.setPalette(dark);

    QCOMPARE(f.desktop.page->scripts.last(), u"window.VaultEditor.setTheme(\"dark\")"_s);
}

void EditorViewTests::theToolbarStandsInsideWhereItIsAskedFor()
{
    Fixture f;
    QVERIFY(!f.view.findChild<EditorBar*>());

    f.view.setInlineToolbar(true);
    const auto* bar = f.view.findChild<EditorBar*>();
    QVERIFY(bar && bar->isVisible());
    QVERIFY(f.view.minimumSizeHint().width() <= 320);

    f.view.setInlineToolbar(false);
    QVERIFY(!f.view.findChild<EditorBar*>());
}

void EditorViewTests::aKeyAsksForALink()
{
    Fixture f;
    QVERIFY(QTest::qWaitForWindowActive(&f.view));
    f.view.setFocus();

    QTest::keyClick(&f.view, Qt::Key_K, Qt::ControlModifier);

    QTRY_VERIFY(f.view.findChild<LinkDialog*>());
    QVERIFY(f.view.findChild<LinkDialog*>()->isVisible());
}

} // namespace wendlore

QTEST_MAIN(wendlore::EditorViewTests)
#include "EditorViewTests.moc"
