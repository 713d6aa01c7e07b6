#include "Editor/WebEngineEditorView.h"

#include "Editor/EditorScript.h"
#include "Support/EngineTest.h"
#include "Support/PageFixture.h"

#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QShortcut>
#include <QSignalSpy>
#include <QWebEngineView>

#include <algorithm>
#include <csignal>

namespace wendlore {

using namespace Qt::StringLiterals;

namespace {

/// Keeps the page busy with every key: the engine gives a page no key before it has answered the one before.
const QString busyScript =
    u"addEventListener('keydown', () => { for (const end = performance.now() + 10; performance.now() < end;); })"_s;

} // namespace

class WebEngineEditorViewTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void typedKeysAreReportedWithTheContentsGeneration();
    void everyTextReachesThePageUnchanged_data();
    void everyTextReachesThePageUnchanged();
    void aPageBeginsWithItsNote_data();
    void aPageBeginsWithItsNote();
    void aPageThatCannotBeginWithItsNoteSaysSo();
    void noPageBeginsWithTheNoteOfAnEarlierOne();
    void editsBeforeANewContentCarryTheOldGeneration();
    void drainingWaitsForTypedKeys();
    void keysStayInTheContentTheyWereTypedInto_data();
    void keysStayInTheContentTheyWereTypedInto();
    void aFrameThatTakesTheKeysHoldsNothingUp();
    void aFenceIsHeardWhenTheKeyboardHasLeft();
    void aFenceThatIsLostIsNotWaitedForForever();
    void drainingWaitsForAPageThatIsJustReady();
    void drainingWithoutAPageEndsAtOnce();
    void aKilledPageIsReportedAndCanBeLoadedAgain();
    void aMissingPageIsReported();
    void thePageOffersOneWayToTheHost();
    void theKeyForLinksIsTheWindows();
    void theContextMenuIsSwedish();
    void theContextMenuPastesTextAsItIs();
    void theViewMayGoBeforeItsWidgetAndAfter();
};

void WebEngineEditorViewTests::typedKeysAreReportedWithTheContentsGeneration()
{
    PageFixture f;
    f.setContent(u"# Rubrik\n\ntext\n"_s, 7);

    f.type(u"x"_s);

    QTRY_VERIFY_WITH_TIMEOUT(f.has(u"changed"_s), patience);
    QCOMPARE(f.lastChange().second, EditorWebView::Generation(7));
    QCOMPARE(f.lastChange().first.size(), 16);
    QVERIFY(f.lastChange().first.contains(u'x'));
}

void WebEngineEditorViewTests::everyTextReachesThePageUnchanged_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("quotes") << u"säg \"hej\" 'då' `nu` \\ /\n"_s;
    QTest::newRow("closing script tag") << u"a `</script><!-- ]]>` ${x}\n"_s;
    QTest::newRow("CRLF") << u"a\r\n\r\nb\r\n"_s;
    QTest::newRow("byte order mark") << u"\uFEFFa\n"_s;
    QTest::newRow("NUL") << u"a"_s + QChar::Null + u"b\n"_s;
    QTest::newRow("emoji and separators") << u"😀 \u2028\u2029 a\n"_s;
    QTest::newRow("1 MB") << (u"Ett stycke med åäö. "_s.repeated(50) + u"\n\n"_s).repeated(1000);
}

void WebEngineEditorViewTests::everyTextReachesThePageUnchanged()
{
    QFETCH(const QString, text);
    PageFixture f;
    f.setContent(text, 1);

    f.type(u"\u00a7"_s);
    QTRY_VERIFY_WITH_TIMEOUT(f.has(u"changed"_s) || f.has(u"edited"_s), patience);
    f.view.evaluate(u"window.VaultEditor.reportWhole()"_s); // a long note tells only what was edited

    QTRY_VERIFY_WITH_TIMEOUT(f.has(u"changed"_s), patience);
    QCOMPARE(QString(f.lastChange().first).remove(u'\u00a7'), text);
}

void WebEngineEditorViewTests::aPageBeginsWithItsNote_data()
{
    everyTextReachesThePageUnchanged_data();
}

void WebEngineEditorViewTests::aPageBeginsWithItsNote()
{
    QFETCH(const QString, text);

    PageFixture f({u"window.VaultEditor.setContent(%1)"_s.arg(jsString(text)), 5});

    const auto ready = std::ranges::find(f.messages, u"ready"_s, &PageMessage::name);
    QCOMPARE(ready->generation, EditorWebView::Generation(5));
    f.view.evaluate(u"window.VaultEditor.reportWhole()"_s);
    QTRY_VERIFY_WITH_TIMEOUT(f.has(u"changed"_s), patience);
    QCOMPARE(f.lastChange(), std::pair(text, EditorWebView::Generation(5)));
}

void WebEngineEditorViewTests::aPageThatCannotBeginWithItsNoteSaysSo()
{
    PageFixture f({u"throw new Error('no')"_s, 5});

    const auto ready = std::ranges::find(f.messages, u"ready"_s, &PageMessage::name);
    QCOMPARE(ready->generation, EditorWebView::Generation(0));
}

void WebEngineEditorViewTests::noPageBeginsWithTheNoteOfAnEarlierOne()
{
    PageFixture f({u"window.VaultEditor.setContent('gammal')"_s, 5});
    f.messages.clear();
    f.beginning = {u"window.VaultEditor.setContent('ny')"_s, 6};

    f.load();

    const auto ready = std::ranges::find(f.messages, u"ready"_s, &PageMessage::name);
    QVERIFY(ready->generation != EditorWebView::Generation(5));
    QVERIFY(!f.value(u"document.body.textContent"_s).toString().contains(u"gammal"_s));
}

void WebEngineEditorViewTests::editsBeforeANewContentCarryTheOldGeneration()
{
    PageFixture f;
    f.setContent(u"första\n"_s, 1);

    f.view.evaluate(u"document.execCommand('insertText', false, 'x')"_s);
    f.view.evaluate(u"window.VaultEditor.setContent('andra\\n')"_s, 2);
    f.drain();

    QVERIFY(f.lastChange().first.contains(u"första"_s));
    QCOMPARE(f.lastChange().second, EditorWebView::Generation(1));
    QCOMPARE(f.messages.last().generation, EditorWebView::Generation(2));
}

void WebEngineEditorViewTests::drainingWaitsForTypedKeys()
{
    PageFixture f;
    f.setContent(u"text\n"_s, 1);

    f.type(u"abcdefghij"_s);
    f.drain();

    QCOMPARE(f.lastChange().first.size(), 15);
}

void WebEngineEditorViewTests::keysStayInTheContentTheyWereTypedInto_data()
{
    QTest::addColumn<bool>("hasCrashed");

    QTest::newRow("first page") << false;
    QTest::newRow("page after a crash") << true;
}

void WebEngineEditorViewTests::keysStayInTheContentTheyWereTypedInto()
{
    QFETCH(const bool, hasCrashed);
    PageFixture f;
    if (hasCrashed) {
        QCOMPARE(::kill(static_cast<pid_t>(f.view.processId()), SIGKILL), 0);
        QTRY_COMPARE_WITH_TIMEOUT(f.deaths, 1, patience);
        f.messages.clear();
        f.load();
    }
    f.setContent(u"not 0\n"_s, 1);
    f.type(u"-"_s);
    f.drain();
    f.view.evaluate(busyScript);

    for (EditorWebView::Generation note = 1; note <= 10; ++note) {
        pressKeys(*f.view.widget()->focusProxy(), u"abcdefghij"_s);
        f.view.evaluate(u"window.VaultEditor.setContent('not %1\\n')"_s.arg(note), note + 1);
        f.view.evaluate(u"window.VaultEditor.focus()"_s);
        f.drain();

        QVERIFY2(f.lastChange().first.contains(u"abcdefghij"_s), qPrintable(f.lastChange().first));
        QCOMPARE(f.lastChange().second, note);
        QCOMPARE(f.value(u"document.querySelector('.ProseMirror').textContent"_s).toString(),
                 u"not %1"_s.arg(note));
    }
}

void WebEngineEditorViewTests::aFrameThatTakesTheKeysHoldsNothingUp()
{
    PageFixture f;
    f.setContent(u"text\n"_s, 1);
    static_cast<void>(
        f.value(u"document.body.append(document.createElement('iframe')), frames[0].focus()"_s));
    pressKeys(*f.view.widget()->focusProxy(), u"elsewhere"_s);

    f.view.evaluate(u"document.title = 'at once'"_s);
    QCOMPARE(f.value(u"document.title"_s).toString(), u"at once"_s);

    QVERIFY(!f.has(u"changed"_s));
    static_cast<void>(f.value(u"window.focus(), window.VaultEditor.focus()"_s));
    f.type(u"abc"_s);
    f.drain();
    QCOMPARE(f.lastChange().first.size(), 8);
}

void WebEngineEditorViewTests::aFenceIsHeardWhenTheKeyboardHasLeft()
{
    PageFixture f;
    f.setContent(u"text\n"_s, 1);
    f.type(u"abc"_s);
    f.drain();
    // Nothing goes by any more that was not let through by its fence.
    static_cast<void>(f.value(u"window.setTimeout = () => 0"_s));
    QLineEdit elsewhere;
    elsewhere.show();
    elsewhere.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&elsewhere));
    QTRY_VERIFY_WITH_TIMEOUT(!f.value(u"document.hasFocus()"_s).toBool(), patience);

    pressKeys(*f.view.widget()->focusProxy(), u"d"_s);
    f.view.evaluate(u"document.title = 'heard'"_s);

    QTRY_COMPARE_WITH_TIMEOUT(f.value(u"document.title"_s).toString(), u"heard"_s, patience);
}

void WebEngineEditorViewTests::aFenceThatIsLostIsNotWaitedForForever()
{
    PageFixture f;
    f.setContent(u"text\n"_s, 1);

    static_cast<void>(f.value(u"__host.after(1, () => { document.title = 'late'; })"_s));

    QTRY_COMPARE_WITH_TIMEOUT(f.value(u"document.title"_s).toString(), u"late"_s, patience);
}

void WebEngineEditorViewTests::drainingWaitsForAPageThatIsJustReady()
{
    WebEngineEditorView view;
    QStringList order;
    view.setEvents({
        .message =
            [&](const QString& name, const QJsonValue&, EditorWebView::Generation) {
                order.append(name);
                if (name != u"ready"_s)
                    return;
                view.evaluate(u"window.VaultEditor.setContent('a')"_s, 1);
                view.drain([&order] { order.append(u"drained"_s); });
            },
        .contentProcessTerminated = [] {},
        .navigationFailed = [] {},
        .vaultRoot = [] { return std::nullopt; },
        .beginning = {},
    });

    view.load(u"vault://app/index.html"_s);

    QTRY_VERIFY_WITH_TIMEOUT(order.contains(u"drained"_s), patience);
    QCOMPARE(order.last(), u"drained"_s);
    QVERIFY(order.contains(u"shown"_s));
}

void WebEngineEditorViewTests::drainingWithoutAPageEndsAtOnce()
{
    WebEngineEditorView view;
    bool isDone = false;

    view.drain([&isDone] { isDone = true; });

    QVERIFY(isDone);
}

void WebEngineEditorViewTests::aKilledPageIsReportedAndCanBeLoadedAgain()
{
    PageFixture f;
    f.setContent(u"text\n"_s, 1);
    QVERIFY(f.view.processId() > 0);

    QCOMPARE(::kill(static_cast<pid_t>(f.view.processId()), SIGKILL), 0);
    QTRY_COMPARE_WITH_TIMEOUT(f.deaths, 1, patience);
    f.messages.clear();
    f.load();
    f.setContent(u"text\n"_s, 2);
    f.type(u"x"_s);

    QTRY_VERIFY_WITH_TIMEOUT(f.has(u"changed"_s), patience);
    QCOMPARE(f.lastChange().second, EditorWebView::Generation(2));
}

void WebEngineEditorViewTests::aMissingPageIsReported()
{
    PageFixture f;
    QTRY_VERIFY_WITH_TIMEOUT(!f.view.widget()->page()->isLoading(), patience);

    f.view.load(u"vault://nowhere/saknas.html"_s);

    QTRY_COMPARE_WITH_TIMEOUT(f.failures, 1, patience);
}

void WebEngineEditorViewTests::thePageOffersOneWayToTheHost()
{
    PageFixture f;

    QCOMPARE(f.value(u"Object.keys(window.webkit.messageHandlers).join()"_s).toString(),
             u"ready,changed,edited,selection,openLink,noteNames,importImage"_s);
    QCOMPARE(f.value(u"Object.keys(window.__host).join()"_s).toString(), u"after,show,drain"_s);
}

void WebEngineEditorViewTests::theKeyForLinksIsTheWindows()
{
    PageFixture f;
    f.setContent(u"ett två\n"_s, 1);
    QShortcut link(Qt::CTRL | Qt::Key_K, f.view.widget());
    link.setContext(Qt::WidgetWithChildrenShortcut);
    QSignalSpy asked(&link, &QShortcut::activated);
    f.view.widget()->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(f.view.widget()));

    QTest::keyClick(f.view.widget()->focusProxy(), Qt::Key_K, Qt::ControlModifier);

    QTRY_COMPARE_WITH_TIMEOUT(asked.size(), 1, patience);
    f.drain();
    QVERIFY(!f.has(u"changed"_s));
}

void WebEngineEditorViewTests::theContextMenuIsSwedish()
{
    PageFixture f;
    f.setContent(u"text\n"_s, 1);

    Q_EMIT f.view.widget()->customContextMenuRequested({50, 50});

    const auto* menu = f.view.widget()->findChild<QMenu*>();
    QVERIFY(menu);
    QStringList titles;
    for (const QAction* entry : menu->actions())
        titles.append(entry->text());
    QCOMPARE(titles, (QStringList{u"Klipp ut"_s, u"Kopiera"_s, u"Klistra in"_s,
                                  u"Klistra in som oformaterad text"_s, u""_s, u"Markera allt"_s}));
}

void WebEngineEditorViewTests::theContextMenuPastesTextAsItIs()
{
    PageFixture f;
    f.setContent(u"text\n"_s, 1);
    f.type(u"x"_s);
    QTRY_VERIFY_WITH_TIMEOUT(f.has(u"changed"_s), patience);
    QGuiApplication::clipboard()->setText(u" **å** \"</script>\""_s);
    Q_EMIT f.view.widget()->customContextMenuRequested({50, 50});
    const auto entries = f.view.widget()->findChild<QMenu*>()->actions();
    const auto isIt = [](const QAction* entry) {
        return entry->text() == u"Klistra in som oformaterad text";
    };
    const auto entry = std::ranges::find_if(entries, isIt);
    QVERIFY(entry != entries.end() && (*entry)->isEnabled());

    (*entry)->trigger();
    f.drain();

    QVERIFY2(f.lastChange().first.contains(u" \\*\\*å\\*\\* \"\\</script>\""_s),
             qPrintable(f.lastChange().first));
    QVERIFY(!f.value(u"document.querySelector('.ProseMirror strong')"_s).isValid());
}

void WebEngineEditorViewTests::theViewMayGoBeforeItsWidgetAndAfter()
{
    auto early = std::make_unique<WebEngineEditorView>();
    QPointer<QWidget> widget = early->widget();
    early.reset();
    QVERIFY(!widget);

    WebEngineEditorView late;
    delete late.widget();
    bool isDone = false;
    late.evaluate(u"1"_s);
    late.drain([&isDone] { isDone = true; });
    QVERIFY(isDone);
    QCOMPARE(late.processId(), 0);
}

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(WebEngineEditorViewTests)
#include "WebEngineEditorViewTests.moc"
