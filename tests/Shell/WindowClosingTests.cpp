#include "Shell/WindowClosing.h"

#include "Editor/EditorSession.h"
#include "Editor/EditorView.h"
#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"

#include <QCloseEvent>
#include <QDir>
#include <QMessageBox>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

class Window final : public QWidget
{
public:
    explicit Window(AppState& state)
        : editor(new EditorView(state, this))
        , closing(*this, *editor)
    {
        (new QVBoxLayout(this))->addWidget(editor);
    }

    EditorView* editor;
    WindowClosing closing;

protected:
    void closeEvent(QCloseEvent* event) override { static_cast<void>(closing.mayClose(*event)); }
};

/// A note that was typed into.
struct Fixture final
{
    Fixture()
    {
        state.addVault(bucket.root());
        desktop.page->post(u"ready"_s);
        window.show();
        window.editor->session().open(bucket.file(u"Mapp/A.md"_s));
        desktop.scheduler.finishBackgroundWork();
        desktop.page->post(u"changed"_s, u"skrivet"_s);
    }

    /// Takes the note's folder away, and the place where texts are recovered.
    void leaveNoRoom() const
    {
        QVERIFY(QDir().rename(bucket.folder(u"Mapp"_s).path(), bucket.folder(u"Borta"_s).path()));
        QFile instead(desktop.stateDirectory.filePath(u"recovered"_s));
        QVERIFY(instead.open(QIODevice::WriteOnly));
    }
    void makeRoom() const
    {
        QVERIFY(QDir().rename(bucket.folder(u"Borta"_s).path(), bucket.folder(u"Mapp"_s).path()));
    }
    [[nodiscard]] QMessageBox* question() const
    {
        for (auto* box : window.findChildren<QMessageBox*>()) {
            if (box->isVisible())
                return box;
        }
        return nullptr;
    }
    void answer(const QString& text) const
    {
        for (QAbstractButton* button : question()->buttons()) {
            if (button->text() == text) {
                button->click();
                return;
            }
        }
        QFAIL("there is no such button");
    }

    Bucket bucket{{"Mapp/A.md", "a"}};
    FakeServices desktop;
    AppState state{desktop.services()};
    Window window{state};
};

} // namespace

class WindowClosingTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatWasTypedIsWrittenFirst();
    void noKeyComesAfterTheLast();
    void textThatCanBeKeptNowhereHoldsTheWindow();
    void theUserMayTryAgain();
    void theUserMayGoBackToTheNote();
};

void WindowClosingTests::whatWasTypedIsWrittenFirst()
{
    Fixture f;

    f.window.close();

    QTRY_VERIFY(!f.window.isVisible());
    QCOMPARE(f.bucket.read(u"Mapp/A.md"_s), "skrivet");
}

void WindowClosingTests::noKeyComesAfterTheLast()
{
    Fixture f;
    f.desktop.page->answersDrains = false;
    bool tookKeys = false;
    f.desktop.page->drainAsked = [&] { tookKeys = f.window.editor->isEnabled(); };

    f.window.close();

    // A page that takes no keys does not take the one either that stands for the last.
    QVERIFY(tookKeys);
    QVERIFY(!f.window.editor->isEnabled());
    f.desktop.page->drains.front()();
    QTRY_VERIFY(!f.window.isVisible());
}

void WindowClosingTests::textThatCanBeKeptNowhereHoldsTheWindow()
{
    Fixture f;
    f.leaveNoRoom();

    f.window.close();
    QTRY_VERIFY(f.question());
    f.window.close();
    QVERIFY(f.window.isVisible());

    f.answer(u"Stäng utan att spara"_s);
    QTRY_VERIFY(!f.window.isVisible());
}

void WindowClosingTests::theUserMayTryAgain()
{
    Fixture f;
    f.leaveNoRoom();
    f.window.close();
    QTRY_VERIFY(f.question());
    f.answer(u"Försök igen"_s);
    QTRY_VERIFY(f.question());

    f.makeRoom();
    f.answer(u"Försök igen"_s);

    QTRY_VERIFY(!f.window.isVisible());
    QCOMPARE(f.bucket.read(u"Mapp/A.md"_s), "skrivet");
}

void WindowClosingTests::theUserMayGoBackToTheNote()
{
    Fixture f;
    f.leaveNoRoom();
    f.window.close();
    QTRY_VERIFY(f.question());

    QTest::keyClick(f.question(), Qt::Key_Escape);

    QTRY_VERIFY(f.window.editor->isEnabled());
    QVERIFY(f.window.isVisible());
    f.makeRoom();
    f.window.close();
    QTRY_VERIFY(!f.window.isVisible());
    QCOMPARE(f.bucket.read(u"Mapp/A.md"_s), "skrivet");
}

QTEST_MAIN(WindowClosingTests)
#include "WindowClosingTests.moc"
