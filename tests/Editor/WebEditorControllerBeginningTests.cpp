#include "Editor/WebEditorController.h"

#include "Fakes/FakeEditorWebView.h"
#include "Fakes/ManualScheduler.h"
#include "Typography/TypographyScript.h"

#include <QJsonObject>
#include <QSignalSpy>
#include <QTest>

namespace wendlore {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString light = u"window.VaultEditor.setTheme(\"light\")"_s;

/// A controller that was given the note "a" before its page was loaded.
struct Fixture final
{
    Fixture()
    {
        auto view = std::make_unique<FakeEditorWebView>();
        page = view.get();
        controller = std::make_unique<WebEditorController>(std::move(view), scheduler);
        set(u"a"_s);
    }

    void set(const QString& text)
    {
        controller->setOnChanged(
            [this, text](const QString& changed) { edits.append(text + u" is "_s + changed); });
        controller->setContent(text);
    }

    ManualScheduler scheduler;
    FakeEditorWebView* page = nullptr;
    std::unique_ptr<WebEditorController> controller;
    QStringList edits;
};

QString contentScript(const QString& text)
{
    return u"window.VaultEditor.setContent(\""_s + text + u"\")"_s;
}

/// The page's message that it put `insert` in at the end of a note of `length` characters.
QJsonObject appended(const QString& insert, int length)
{
    return {{u"from"_s, length},
            {u"to"_s, length},
            {u"insert"_s, insert},
            {u"count"_s, 1},
            {u"length"_s, length + insert.size()}};
}

} // namespace

/// What a page does before it is ready.
class WebEditorControllerBeginningTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPageThatBeginsWithItsNoteIsSentNothing();
    void aPageWithoutANoteBeginsWithItsLook();
    void whatChangedSinceThePageBeganIsSent();
    void aPageThatDidNotComeToItsNoteIsSentIt();
    void whatIsTypedBeforeThePageIsReadyGoesToTheNoteItBeganWith();
    void aPageThatComesBackBeginsWithTheLastReportedText();
    void whatAnEarlierPageShowedDoesNotCount();
    void aReadyPageBeginsWithNothing();
};

void WebEditorControllerBeginningTests::aPageThatBeginsWithItsNoteIsSentNothing()
{
    Fixture f;
    QSignalSpy becameReady(f.controller.get(), &WebEditorController::becameReady);

    const QString script = f.page->begin();
    f.page->post(u"ready"_s);

    QCOMPARE(script, (QStringList{light, zoomScript(1), contentScript(u"a"_s)}.join(u";\n"_s)));
    QCOMPARE(f.page->scripts, QStringList());
    QCOMPARE(becameReady.count(), 1);
    f.page->post(u"edited"_s, appended(u"b"_s, 1));
    QCOMPARE(f.edits, QStringList{u"a is ab"_s});
}

void WebEditorControllerBeginningTests::aPageWithoutANoteBeginsWithItsLook()
{
    ManualScheduler scheduler;
    auto view = std::make_unique<FakeEditorWebView>();
    FakeEditorWebView* const page = view.get();
    WebEditorController controller(std::move(view), scheduler);

    const QString script = page->begin();
    page->post(u"ready"_s);

    QCOMPARE(script, (QStringList{light, zoomScript(1)}.join(u";\n"_s)));
    QCOMPARE(page->scripts, (QStringList{light, zoomScript(1)}));
}

void WebEditorControllerBeginningTests::whatChangedSinceThePageBeganIsSent()
{
    Fixture f;
    static_cast<void>(f.page->begin());

    f.controller->setTheme(true);
    f.set(u"b"_s);
    f.page->post(u"ready"_s);

    QCOMPARE(f.page->scripts,
             (QStringList{u"window.VaultEditor.setTheme(\"dark\")"_s, zoomScript(1), contentScript(u"b"_s)}));
}

void WebEditorControllerBeginningTests::aPageThatDidNotComeToItsNoteIsSentIt()
{
    Fixture f;
    static_cast<void>(f.page->begin());

    f.page->postLate(u"ready"_s, {}, 0);

    QCOMPARE(f.page->scripts, (QStringList{light, zoomScript(1), contentScript(u"a"_s)}));
}

void WebEditorControllerBeginningTests::whatIsTypedBeforeThePageIsReadyGoesToTheNoteItBeganWith()
{
    Fixture f;
    static_cast<void>(f.page->begin());
    const EditorWebView::Generation begun = f.page->generation;

    f.set(u"b"_s);
    f.page->postLate(u"changed"_s, u"a!"_s, begun);
    f.page->postLate(u"ready"_s, {}, begun);

    QCOMPARE(f.edits, QStringList{u"a is a!"_s});
    QCOMPARE(f.page->scripts.last(), contentScript(u"b"_s));
}

void WebEditorControllerBeginningTests::aPageThatComesBackBeginsWithTheLastReportedText()
{
    Fixture f;
    static_cast<void>(f.page->begin());
    f.page->post(u"ready"_s);
    f.page->post(u"edited"_s, appended(u"b"_s, 1));

    f.page->terminateContentProcess();
    f.scheduler.advance(300ms);
    const QString script = f.page->begin();
    f.page->post(u"ready"_s);

    QVERIFY(script.endsWith(contentScript(u"ab"_s)));
    QCOMPARE(f.page->scripts, QStringList());
    f.page->post(u"edited"_s, appended(u"c"_s, 2));
    QCOMPARE(f.edits, (QStringList{u"a is ab"_s, u"a is abc"_s}));
}

/// A page that was loaded anew, and did not ask, shows nothing whatever it says.
void WebEditorControllerBeginningTests::whatAnEarlierPageShowedDoesNotCount()
{
    Fixture f;
    static_cast<void>(f.page->begin());
    f.page->post(u"ready"_s);

    f.page->terminateContentProcess();
    f.scheduler.advance(300ms);
    f.page->post(u"ready"_s);

    QCOMPARE(f.page->scripts.last(), contentScript(u"a"_s));
}

/// Whoever asks then is not the page that is being loaded.
void WebEditorControllerBeginningTests::aReadyPageBeginsWithNothing()
{
    Fixture f;
    f.page->post(u"ready"_s);

    QCOMPARE(f.page->begin(), QString());
}

} // namespace wendlore

QTEST_GUILESS_MAIN(wendlore::WebEditorControllerBeginningTests)
#include "WebEditorControllerBeginningTests.moc"
