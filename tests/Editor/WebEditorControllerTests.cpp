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

struct Fixture final
{
    Fixture()
    {
        auto view = std::make_unique<FakeEditorWebView>();
        page = view.get();
        controller = std::make_unique<WebEditorController>(std::move(view), scheduler);
        controller->setOnChanged(receiver(u"A"_s));
        controller->setOnOpenLink(
            [this](const QString& href, bool isWiki) { links.append(href + (isWiki ? u" wiki"_s : u""_s)); });
    }

    WebEditorController::Changed receiver(const QString& note)
    {
        return [this, note](const QString& text) { edits.append(note + u": "_s + text); };
    }
    /// Shows `text` as the content of `note`; gives the generation that the page then has.
    EditorWebView::Generation show(const QString& note, const QString& text)
    {
        controller->setOnChanged(receiver(note));
        controller->setContent(text);
        return page->generation;
    }
    /// The scripts that the page got since the last call.
    QStringList newScripts() { return std::exchange(page->scripts, {}); }

    ManualScheduler scheduler;
    FakeEditorWebView* page = nullptr;
    std::unique_ptr<WebEditorController> controller;
    QStringList edits;
    QStringList links;
};

QJsonObject edit(int from, int to, const QString& insert, int count, int length)
{
    return {
        {u"from"_s, from}, {u"to"_s, to}, {u"insert"_s, insert}, {u"count"_s, count}, {u"length"_s, length}};
}

} // namespace

class WebEditorControllerTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void loadsThePageAtOnce();
    void nothingIsSentBeforeThePageIsReady();
    void aNoteSetBeforeReadyIsShownOnceReady();
    void readySendsOnlyWhatWasSet();
    void contentIsQuotedForTheScript();
    void commandsCarryNothingANumberOrAText_data();
    void commandsCarryNothingANumberOrAText();
    void themeTypographyAndZoomReachAReadyPage();
    void focusNeedsAReadyPage();
    void changedGoesToTheReceiverAndIsRemembered();
    void malformedChangedIsIgnored_data();
    void malformedChangedIsIgnored();
    void editsOfALongNoteGiveItsWholeText();
    void anEditThatDoesNotFitAsksForTheWholeNote();
    void lateEditsGoToTheNoteTheyWereTypedIn();
    void selectionPublishesTheState();
    void malformedSelectionIsIgnored();
    void openLinkTakesTextOrDictionary_data();
    void openLinkTakesTextOrDictionary();
    void unknownMessagesAreIgnored();
    void aDeadPageComesBackWithTheLastReportedText();
    void aPageThatKeepsFailingIsRetried();
    void aDestroyedControllerReloadsNothing();
    void aLateEditGoesToTheNoteItWasTypedIn();
    void aLateEditOfAContentFromBeforeTheCrashStillArrives();
    void receiversAreForgottenOnceTheirMessagesCannotComeAnyMore();
    void editsOfAPageWithoutContentReachNoNote();
    void aMessageFromTheFutureIsIgnored();
    void aReceiverMayReplaceTheContent();
    void theBucketIsAskedForEachTime();
};

void WebEditorControllerTests::loadsThePageAtOnce()
{
    Fixture f;

    QCOMPARE(f.page->loads, QStringList{u"vault://app/index.html"_s});
    QVERIFY(!f.controller->isReady());
}

void WebEditorControllerTests::nothingIsSentBeforeThePageIsReady()
{
    Fixture f;

    f.controller->setContent(u"text"_s);
    f.controller->setTheme(true);
    f.controller->setZoom(2);
    f.controller->setTypography(TypographyTheme::standard());
    f.controller->exec(u"bold"_s);
    f.controller->focus();

    QVERIFY(f.page->scripts.isEmpty());
}

void WebEditorControllerTests::aNoteSetBeforeReadyIsShownOnceReady()
{
    Fixture f;
    QSignalSpy becameReady(f.controller.get(), &WebEditorController::becameReady);
    f.controller->setContent(u"först"_s);
    f.controller->setContent(u"sedan"_s);
    f.controller->setTheme(true);
    f.controller->setZoom(1.2);
    f.controller->setTypography(TypographyTheme::standard());

    f.page->post(u"ready"_s);

    QVERIFY(f.controller->isReady());
    QCOMPARE(f.newScripts(),
             (QStringList{u"window.VaultEditor.setTheme(\"dark\")"_s,
                          typographyScript(TypographyTheme::standard()),
                          u"document.documentElement.style.setProperty('--editor-zoom','1.2')"_s,
                          u"window.VaultEditor.setContent(\"sedan\")"_s}));
    QCOMPARE(becameReady.count(), 1);
}

void WebEditorControllerTests::readySendsOnlyWhatWasSet()
{
    Fixture f;

    f.page->post(u"ready"_s);

    QCOMPARE(f.newScripts(),
             (QStringList{u"window.VaultEditor.setTheme(\"light\")"_s,
                          u"document.documentElement.style.setProperty('--editor-zoom','1.0')"_s}));
}

void WebEditorControllerTests::contentIsQuotedForTheScript()
{
    Fixture f;
    f.page->post(u"ready"_s);
    f.newScripts();

    f.controller->setContent(u"\"citat\" \\ /\n</script>"_s);

    QCOMPARE(f.newScripts(),
             QStringList{uR"(window.VaultEditor.setContent("\"citat\" \\ \/\n<\/script>"))"_s});
}

void WebEditorControllerTests::commandsCarryNothingANumberOrAText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("script");

    QTest::newRow("nothing") << QString() << -1 << u"window.VaultEditor.exec(\"c\")"_s;
    QTest::newRow("number") << QString() << 2 << u"window.VaultEditor.exec(\"c\", 2)"_s;
    QTest::newRow("text") << u"a/\"b\""_s << -1 << uR"(window.VaultEditor.exec("c", "a\/\"b\""))"_s;
    QTest::newRow("empty text") << u""_s << -1 << u"window.VaultEditor.exec(\"c\", \"\")"_s;
}

void WebEditorControllerTests::commandsCarryNothingANumberOrAText()
{
    QFETCH(const QString, text);
    QFETCH(const int, number);
    Fixture f;
    f.page->post(u"ready"_s);
    f.newScripts();

    if (!text.isNull())
        f.controller->exec(u"c"_s, text);
    else if (number >= 0)
        f.controller->exec(u"c"_s, number);
    else
        f.controller->exec(u"c"_s);

    QTEST(f.newScripts().join(u'|'), "script");
}

void WebEditorControllerTests::themeTypographyAndZoomReachAReadyPage()
{
    Fixture f;
    f.page->post(u"ready"_s);
    f.newScripts();

    f.controller->setTheme(true);
    f.controller->setTypography(TypographyTheme::standard());
    f.controller->setZoom(0.5);

    QCOMPARE(f.newScripts(), (QStringList{u"window.VaultEditor.setTheme(\"dark\")"_s,
                                          typographyScript(TypographyTheme::standard()), zoomScript(0.5)}));
}

void WebEditorControllerTests::focusNeedsAReadyPage()
{
    Fixture f;
    f.page->post(u"ready"_s);
    f.newScripts();
    f.controller->focus();
    f.controller->focusInView();
    QCOMPARE(f.newScripts(),
             (QStringList{u"window.VaultEditor.focus()"_s, u"window.VaultEditor.exec(\"focusInView\")"_s}));
}

void WebEditorControllerTests::changedGoesToTheReceiverAndIsRemembered()
{
    Fixture f;
    f.page->post(u"ready"_s);
    f.controller->setContent(u"a"_s);

    f.page->post(u"changed"_s, u"ab"_s);

    QCOMPARE(f.edits, QStringList{u"A: ab"_s});
    QCOMPARE(f.controller->desiredContent(), u"ab"_s);
}

void WebEditorControllerTests::malformedChangedIsIgnored_data()
{
    QTest::addColumn<QJsonValue>("body");

    QTest::newRow("nothing") << QJsonValue();
    QTest::newRow("number") << QJsonValue(1);
    QTest::newRow("dictionary") << QJsonValue(QJsonObject{{u"text"_s, u"x"_s}});
}

void WebEditorControllerTests::malformedChangedIsIgnored()
{
    QFETCH(const QJsonValue, body);
    Fixture f;
    f.page->post(u"ready"_s);
    f.controller->setContent(u"a"_s);

    f.page->post(u"changed"_s, body);

    QVERIFY(f.edits.isEmpty());
    QCOMPARE(f.controller->desiredContent(), u"a"_s);
}

void WebEditorControllerTests::editsOfALongNoteGiveItsWholeText()
{
    Fixture f;
    f.page->post(u"ready"_s);
    f.controller->setContent(u"åäö"_s);
    f.newScripts();

    f.page->post(u"edited"_s, edit(3, 3, u"\r\n"_s, 1, 5));
    f.page->post(u"edited"_s, edit(1, 2, u""_s, 2, 4));

    QCOMPARE(f.edits, (QStringList{u"A: åäö\r\n"_s, u"A: åö\r\n"_s}));
    QCOMPARE(f.controller->desiredContent(), u"åö\r\n"_s);
    QVERIFY(f.newScripts().isEmpty());
}

void WebEditorControllerTests::anEditThatDoesNotFitAsksForTheWholeNote()
{
    Fixture f;
    f.page->post(u"ready"_s);
    f.controller->setContent(u"abc"_s);
    const QString question = u"window.VaultEditor.reportWhole()"_s;

    for (const QJsonObject& body : {edit(0, 0, u"x"_s, 2, 4), edit(0, 0, u"x"_s, 1, 9), QJsonObject()}) {
        f.newScripts();
        f.page->post(u"edited"_s, body);
        QCOMPARE(f.newScripts(), QStringList{question});
    }
    QVERIFY(f.edits.isEmpty());

    f.page->post(u"changed"_s, u"xyabc"_s);
    f.page->post(u"edited"_s, edit(5, 5, u"!"_s, 1, 6));
    QCOMPARE(f.edits, (QStringList{u"A: xyabc"_s, u"A: xyabc!"_s}));
}

void WebEditorControllerTests::lateEditsGoToTheNoteTheyWereTypedIn()
{
    Fixture f;
    f.page->post(u"ready"_s);
    const auto a = f.show(u"A"_s, u"a"_s);
    f.page->post(u"edited"_s, edit(1, 1, u"1"_s, 1, 2));
    f.show(u"B"_s, u"b"_s);
    f.newScripts();

    f.page->postLate(u"edited"_s, edit(2, 2, u"2"_s, 2, 3), a);
    f.page->post(u"edited"_s, edit(1, 1, u"3"_s, 1, 2));

    QCOMPARE(f.edits, (QStringList{u"A: a1"_s, u"A: a12"_s, u"B: b3"_s}));
    QVERIFY(f.newScripts().isEmpty());
}

void WebEditorControllerTests::selectionPublishesTheState()
{
    Fixture f;
    QSignalSpy stateChanged(f.controller.get(), &WebEditorController::stateChanged);

    f.page->post(u"selection"_s, QJsonObject{{u"bold"_s, true}});
    f.page->post(u"selection"_s, QJsonObject{{u"bold"_s, true}});

    QCOMPARE(f.controller->state(), ToolbarState{.bold = true});
    QCOMPARE(stateChanged.count(), 1);
}

void WebEditorControllerTests::malformedSelectionIsIgnored()
{
    Fixture f;
    f.page->post(u"selection"_s, QJsonObject{{u"bold"_s, true}});

    f.page->post(u"selection"_s, u"bold"_s);
    f.page->post(u"selection"_s, QJsonValue());

    QVERIFY(f.controller->state().bold);
}

void WebEditorControllerTests::openLinkTakesTextOrDictionary_data()
{
    QTest::addColumn<QJsonValue>("body");
    QTest::addColumn<QStringList>("links");

    QTest::newRow("text") << QJsonValue(u"a.md"_s) << QStringList{u"a.md"_s};
    QTest::newRow("dictionary") << QJsonValue(QJsonObject{{u"href"_s, u"a.md"_s}}) << QStringList{u"a.md"_s};
    QTest::newRow("wiki") << QJsonValue(QJsonObject{{u"href"_s, u"A"_s}, {u"wiki"_s, true}})
                          << QStringList{u"A wiki"_s};
    QTest::newRow("wiki is no flag") << QJsonValue(QJsonObject{{u"href"_s, u"A"_s}, {u"wiki"_s, u"ja"_s}})
                                     << QStringList{u"A"_s};
    QTest::newRow("no href") << QJsonValue(QJsonObject{{u"wiki"_s, true}}) << QStringList();
    QTest::newRow("href is no text") << QJsonValue(QJsonObject{{u"href"_s, 3}}) << QStringList();
    QTest::newRow("nothing") << QJsonValue() << QStringList();
}

void WebEditorControllerTests::openLinkTakesTextOrDictionary()
{
    QFETCH(const QJsonValue, body);
    Fixture f;

    f.page->post(u"openLink"_s, body);

    QTEST(f.links, "links");
}

void WebEditorControllerTests::unknownMessagesAreIgnored()
{
    Fixture f;

    f.page->post(u"Ready"_s);
    f.page->post(u""_s, u"x"_s);

    QVERIFY(!f.controller->isReady());
    QVERIFY(f.edits.isEmpty());
}

void WebEditorControllerTests::aDeadPageComesBackWithTheLastReportedText()
{
    Fixture f;
    f.page->post(u"ready"_s);
    f.controller->setContent(u"a"_s);
    f.page->post(u"edited"_s, edit(1, 1, u"b"_s, 1, 2));
    f.newScripts();

    f.page->terminateContentProcess();
    f.scheduler.advance(299ms);
    QCOMPARE(f.page->loads.size(), 1);
    f.scheduler.advance(1ms);
    QCOMPARE(f.page->loads.size(), 2);
    QVERIFY(!f.controller->isReady());
    f.page->post(u"ready"_s);

    QCOMPARE(f.newScripts().last(), u"window.VaultEditor.setContent(\"ab\")"_s);
    f.page->post(u"edited"_s, edit(2, 2, u"c"_s, 1, 3));
    f.page->post(u"changed"_s, u"abcd"_s);
    QCOMPARE(f.edits, (QStringList{u"A: ab"_s, u"A: abc"_s, u"A: abcd"_s}));
}

void WebEditorControllerTests::aPageThatKeepsFailingIsRetried()
{
    Fixture f;

    for (int attempt = 0; attempt < 20; ++attempt) {
        f.page->failNavigation();
        f.scheduler.advance(300ms);
    }

    QCOMPARE(f.page->loads.size(), 21);
}

void WebEditorControllerTests::aDestroyedControllerReloadsNothing()
{
    Fixture f;
    f.page->terminateContentProcess();

    f.controller.reset();

    QCOMPARE(f.scheduler.pendingTasks(), 0);
}

void WebEditorControllerTests::aLateEditGoesToTheNoteItWasTypedIn()
{
    Fixture f;
    f.page->post(u"ready"_s);
    const auto a = f.show(u"A"_s, u"a"_s);
    f.show(u"B"_s, u"b"_s);

    f.page->postLate(u"changed"_s, u"a1"_s, a);

    QCOMPARE(f.edits, QStringList{u"A: a1"_s});
    QCOMPARE(f.controller->desiredContent(), u"b"_s);
}

void WebEditorControllerTests::aLateEditOfAContentFromBeforeTheCrashStillArrives()
{
    Fixture f;
    f.page->post(u"ready"_s);
    const auto a = f.show(u"A"_s, u"a"_s);
    f.page->terminateContentProcess();
    f.scheduler.advance(300ms);
    f.show(u"B"_s, u"b"_s);
    f.show(u"C"_s, u"c"_s);

    f.page->postLate(u"changed"_s, u"a1"_s, a);

    QCOMPARE(f.edits, QStringList{u"A: a1"_s});
}

void WebEditorControllerTests::receiversAreForgottenOnceTheirMessagesCannotComeAnyMore()
{
    Fixture f;
    f.page->post(u"ready"_s);
    const auto token = std::make_shared<int>();
    f.controller->setOnChanged([token](const QString&) {});
    f.controller->setContent(u"a"_s);
    f.show(u"B"_s, u"b"_s);
    QCOMPARE(token.use_count(), 2);

    f.page->post(u"shown"_s);

    QCOMPARE(token.use_count(), 1);
}

void WebEditorControllerTests::editsOfAPageWithoutContentReachNoNote()
{
    Fixture f;
    f.show(u"A"_s, u"a"_s);

    f.page->postLate(u"changed"_s, u"x"_s, 0);

    QVERIFY(f.edits.isEmpty());
    QCOMPARE(f.controller->desiredContent(), u"a"_s);
}

void WebEditorControllerTests::aMessageFromTheFutureIsIgnored()
{
    Fixture f;
    f.page->post(u"ready"_s);
    const auto a = f.show(u"A"_s, u"a"_s);

    f.page->postLate(u"changed"_s, u"x"_s, a + 1);
    f.page->post(u"changed"_s, u"ab"_s);

    QCOMPARE(f.edits, QStringList{u"A: ab"_s});
}

void WebEditorControllerTests::aReceiverMayReplaceTheContent()
{
    Fixture f;
    f.page->post(u"ready"_s);
    f.controller->setOnChanged([&f](const QString& text) { f.show(u"B"_s, text + u"!"_s); });
    f.controller->setContent(u"a"_s);

    f.page->post(u"changed"_s, u"ab"_s);
    f.page->post(u"changed"_s, u"abc"_s);

    QCOMPARE(f.edits, QStringList{u"B: abc"_s});
}

void WebEditorControllerTests::theBucketIsAskedForEachTime()
{
    Fixture f;
    std::optional<FileURL> bucket;
    QVERIFY(!f.controller->vaultRoot());
    f.controller->setVaultProvider([&bucket] { return bucket; });
    QVERIFY(!f.controller->vaultRoot());

    bucket = FileURL::directory(u"/b"_s);

    QCOMPARE(f.controller->vaultRoot(), bucket);
}

} // namespace wendlore

QTEST_GUILESS_MAIN(wendlore::WebEditorControllerTests)
#include "WebEditorControllerTests.moc"
