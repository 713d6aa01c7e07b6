#include "Editor/ConflictNotice.h"

#include "Editor/EditorSession.h"
#include "Editor/EditorView.h"
#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

namespace wendlore {

using namespace Qt::StringLiterals;

namespace {

/// A note that is being typed into below the place where conflicts are told.
struct Fixture final
{
    Fixture()
    {
        state.addVault(bucket.root());
        desktop.page->post(u"ready"_s);
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(notice);
        layout->addWidget(note);
        layout->addWidget(editor);
        editor->setFocusProxy(note);
        window.show();
        session.open(bucket.file(u"A.md"_s));
        desktop.scheduler.finishBackgroundWork();
        note->setFocus();
    }

    void makeConflict(const QString& ours, const QByteArray& theirs)
    {
        desktop.page->post(u"changed"_s, ours);
        bucket.write(u"A.md"_s, theirs);
        session.flush();
    }
    [[nodiscard]] QStringList shownTexts() const
    {
        QStringList texts;
        for (const QLabel* label : notice->findChildren<QLabel*>())
            texts.append(label->text());
        return texts;
    }
    [[nodiscard]] QPushButton* button() const { return notice->findChild<QPushButton*>(); }

    Bucket bucket{{"A.md", "a"}};
    FakeServices desktop;
    AppState state{desktop.services()};
    QWidget window;
    EditorView* editor = new EditorView(state, &window);
    EditorSession& session = editor->session();
    ConflictNotice* notice = new ConflictNotice(*editor, &window);
    QLineEdit* note = new QLineEdit(&window);
};

} // namespace

class ConflictNoticeTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aConflictIsToldUntilTheUserHasHeard();
    void aSecondConflictTakesTheFirstNoticesPlace();
    void whoTypesGoesOnTyping();
    void theKeyboardReachesTheButton();
};

void ConflictNoticeTests::aConflictIsToldUntilTheUserHasHeard()
{
    Fixture f;
    QVERIFY(QTest::qWaitForWindowActive(&f.window));
    QVERIFY(f.notice->isHidden());

    f.makeConflict(u"vårt"_s, "deras");

    QVERIFY(f.notice->isVisible());
    QCOMPARE(f.shownTexts(), QStringList({u"Versionskonflikt"_s, f.session.conflictNotice()}));
    QVERIFY(f.session.conflictNotice().startsWith(u"Noten ändrades av någon annan"_s));
    QCOMPARE(f.notice->accessibleDescription(), f.session.conflictNotice());
    QCOMPARE(f.button()->text(), u"OK"_s);

    QTest::mouseClick(f.button(), Qt::LeftButton);

    QVERIFY(f.notice->isHidden());
    QVERIFY(f.note->hasFocus());
    QVERIFY(f.session.conflictNotice().isEmpty());
}

void ConflictNoticeTests::aSecondConflictTakesTheFirstNoticesPlace()
{
    Fixture f;
    f.makeConflict(u"vårt"_s, "deras");
    const QStringList first = f.shownTexts();

    f.makeConflict(u"vårt 2"_s, "deras 2");

    QVERIFY(f.notice->isVisible());
    QVERIFY(f.shownTexts() != first);
    f.button()->click();
    QVERIFY(f.notice->isHidden());
}

void ConflictNoticeTests::whoTypesGoesOnTyping()
{
    Fixture f;
    QVERIFY(QTest::qWaitForWindowActive(&f.window));
    QTest::keyClicks(f.note, u"ett "_s);

    f.makeConflict(u"vårt"_s, "deras");

    QVERIFY(f.note->hasFocus());
    QCOMPARE(QApplication::activeWindow(), &f.window);
    QVERIFY(!QApplication::activeModalWidget());
    QTest::keyClicks(QApplication::focusWidget(), u"två tre "_s);
    QCOMPARE(f.note->text(), u"ett två tre "_s);
    QVERIFY(f.notice->isVisible());
}

void ConflictNoticeTests::theKeyboardReachesTheButton()
{
    Fixture f;
    QVERIFY(QTest::qWaitForWindowActive(&f.window));
    f.makeConflict(u"vårt"_s, "deras");

    QTest::keyClick(f.note, Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget(), f.button());
    QTest::keyClick(f.button(), Qt::Key_Space);

    QVERIFY(f.notice->isHidden());
    QVERIFY(f.note->hasFocus());
}

} // namespace wendlore

QTEST_MAIN(wendlore::ConflictNoticeTests)
#include "ConflictNoticeTests.moc"
