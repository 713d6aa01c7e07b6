#include "Editor/WebEngineEditorView.h"

#include "Editor/EditorScript.h"
#include "Fakes/Bucket.h"
#include "Support/EngineTest.h"

#include <QBuffer>
#include <QImage>
#include <QJsonObject>
#include <QMenu>
#include <QSignalSpy>
#include <QWebEnginePage>
#include <QWebEngineView>

#include <csignal>

namespace wendlore {

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 30'000;

struct Message final
{
    QString name;
    QJsonValue body;
    EditorWebView::Generation generation;
};

/// The real page in the real engine, with a note that a test shows.
class Fixture final
{
public:
    Fixture()
    {
        view.setEvents({
            .message =
                [this](const QString& name, const QJsonValue& body, EditorWebView::Generation generation) {
                    messages.append({name, body, generation});
                },
            .contentProcessTerminated = [this] { ++deaths; },
            .navigationFailed = [this] { ++failures; },
            .vaultRoot = [this] { return std::optional(bucket.root()); },
        });
        view.widget()->resize(600, 400);
        view.widget()->show();
        view.widget()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(view.widget(), patience));
        load();
    }

    void load()
    {
        view.load(u"vault://app/index.html"_s);
        QTRY_VERIFY_WITH_TIMEOUT(has(u"ready"_s), patience);
    }
    void setContent(const QString& text, EditorWebView::Generation generation)
    {
        view.evaluate(u"window.VaultEditor.setContent(%1)"_s.arg(jsString(text)), generation);
        view.evaluate(u"window.VaultEditor.focus()"_s);
        drain();
    }
    /// Waits until the page has said all that it had to say so far.
    void drain()
    {
        bool isDone = false;
        view.drain([&isDone] { isDone = true; });
        QTRY_VERIFY_WITH_TIMEOUT(isDone, patience);
    }
    void type(const QString& keys)
    {
        view.widget()->setFocus();
        QTRY_VERIFY_WITH_TIMEOUT(value(u"document.hasFocus()"_s).toBool(), patience);
        QTest::keyClicks(view.widget()->focusProxy(), keys);
    }
    /// What `expression` is in the page.
    [[nodiscard]] QVariant value(const QString& expression)
    {
        std::optional<QVariant> result;
        view.widget()->page()->runJavaScript(expression,
                                             [&result](const QVariant& answer) { result = answer; });
        static_cast<void>(QTest::qWaitFor([&result] { return result.has_value(); }, patience));
        return result.value_or(QVariant());
    }
    /// What became of asking the page for an image: its width, or -1.
    [[nodiscard]] int widthOfImage(const QString& address)
    {
        static_cast<void>(value(u"window.__width = null; (() => { const image = new Image();"
                                "image.onload = () => { window.__width = image.naturalWidth; };"
                                "image.onerror = () => { window.__width = -1; };"
                                "image.src = %1; })()"_s.arg(jsString(address))));
        QVariant width;
        static_cast<void>(
            QTest::qWaitFor([&] { return !(width = value(u"window.__width"_s)).isNull(); }, patience));
        return width.toInt();
    }
    [[nodiscard]] bool has(const QString& name) const
    {
        return std::ranges::any_of(messages, [&](const Message& message) { return message.name == name; });
    }
    /// The note as the page reported it last, and the generation that the report carried.
    [[nodiscard]] std::pair<QString, EditorWebView::Generation> lastChange() const
    {
        for (auto message = messages.rbegin(); message != messages.rend(); ++message) {
            if (message->name == u"changed"_s)
                return {message->body.toString(), message->generation};
        }
        return {};
    }

    Bucket bucket;
    WebEngineEditorView view;
    QList<Message> messages;
    int deaths = 0;
    int failures = 0;
};

QByteArray png(int width)
{
    QImage image(width, 1, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

} // namespace

class WebEngineEditorViewTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void typedKeysAreReportedWithTheContentsGeneration();
    void everyTextReachesThePageUnchanged_data();
    void everyTextReachesThePageUnchanged();
    void editsBeforeANewContentCarryTheOldGeneration();
    void drainingWaitsForTypedKeys();
    void drainingWithoutAPageEndsAtOnce();
    void aKilledPageIsReportedAndCanBeLoadedAgain();
    void aMissingPageIsReported();
    void imagesOfTheBucketAreShown();
    void nothingElseOfTheBucketIsRead();
    void thePageStaysWhereItIs_data();
    void thePageStaysWhereItIs();
    void thePageOffersOneWayToTheHost();
    void requestsThatAreGivenUpDoNoHarm();
    void theContextMenuIsSwedish();
    void theViewMayGoBeforeItsWidgetAndAfter();
};

void WebEngineEditorViewTests::typedKeysAreReportedWithTheContentsGeneration()
{
    Fixture f;
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
    QTest::newRow("1 MB") << u"Ett stycke med åäö.\n\n"_s.repeated(50'000);
}

void WebEngineEditorViewTests::everyTextReachesThePageUnchanged()
{
    QFETCH(const QString, text);
    Fixture f;
    f.setContent(text, 1);

    f.type(u"\u00a7"_s);

    QTRY_VERIFY_WITH_TIMEOUT(f.has(u"changed"_s), patience);
    QCOMPARE(QString(f.lastChange().first).remove(u'\u00a7'), text);
}

void WebEngineEditorViewTests::editsBeforeANewContentCarryTheOldGeneration()
{
    Fixture f;
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
    Fixture f;
    f.setContent(u"text\n"_s, 1);

    f.type(u"abcdefghij"_s);
    f.drain();

    QCOMPARE(f.lastChange().first.size(), 15);
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
    Fixture f;
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
    Fixture f;

    f.view.load(u"vault://nowhere/saknas.html"_s);

    QTRY_COMPARE_WITH_TIMEOUT(f.failures, 1, patience);
}

void WebEngineEditorViewTests::imagesOfTheBucketAreShown()
{
    Fixture f;
    f.bucket.write(u"assets/Bild 1.png"_s, png(31));

    QCOMPARE(f.widthOfImage(u"assets/Bild%201.png"_s), 31);
    QCOMPARE(f.widthOfImage(u"vault://app/assets/Bild 1.png"_s), 31);
    QCOMPARE(f.widthOfImage(u"assets/saknas.png"_s), -1);
}

void WebEngineEditorViewTests::nothingElseOfTheBucketIsRead()
{
    Fixture f;
    f.bucket.write(u"assets/a.js"_s, "window.__ran = true;");
    f.bucket.write(u"assets/a.html"_s, "<script>parent.__ran = true</script>");

    static_cast<void>(
        f.value(u"window.__read = []; (() => {"
                "const note = outcome => window.__read.push(outcome);"
                "const script = document.createElement('script');"
                "script.onload = () => note('script'); script.onerror = () => note('no');"
                "try { script.src = 'assets/a.js'; document.head.append(script); }"
                "catch { note('no'); }"
                "fetch('assets/a.html').then(() => note('fetch'), () => note('no'));"
                "const frame = document.createElement('iframe'); frame.src = 'assets/a.html';"
                "document.body.append(frame);"
                "setTimeout(() => note(frame.contentDocument?.scripts.length ? 'frame' : 'no'), 500);"
                "})()"_s));

    QTRY_COMPARE_WITH_TIMEOUT(f.value(u"window.__read.length"_s).toInt(), 3, patience);
    QCOMPARE(f.value(u"window.__read.join()"_s).toString(), u"no,no,no"_s);
    QVERIFY(f.value(u"window.__ran ?? null"_s).isNull());
}

void WebEngineEditorViewTests::thePageStaysWhereItIs_data()
{
    QTest::addColumn<QString>("script");

    QTest::newRow("web") << u"location.href = 'https://example.org/'"_s;
    QTest::newRow("asset") << u"location.href = 'vault://app/assets/a.html'"_s;
    QTest::newRow("file") << u"location.href = 'file:///etc/hostname'"_s;
    QTest::newRow("window") << u"window.open('vault://app/index.html')"_s;
    QTest::newRow("download") << u"{ const a = document.createElement('a'); a.href = 'vault://app/index.js';"
                                 " a.download = 'x'; document.body.append(a); a.click(); a.remove(); }"_s;
}

void WebEngineEditorViewTests::thePageStaysWhereItIs()
{
    QFETCH(const QString, script);
    Fixture f;
    f.bucket.write(u"assets/a.html"_s, "hej");

    f.view.evaluate(script);
    f.drain();

    QCOMPARE(f.value(u"location.href"_s).toString(), u"vault://app/index.html"_s);
    QCOMPARE(f.view.widget()->page()->url(), QUrl(u"vault://app/index.html"_s));
}

void WebEngineEditorViewTests::thePageOffersOneWayToTheHost()
{
    Fixture f;

    QCOMPARE(f.value(u"Object.keys(window.webkit.messageHandlers).join()"_s).toString(),
             u"ready,changed,selection,openLink"_s);
    QCOMPARE(f.value(u"Object.keys(window.__host).join()"_s).toString(), u"show,drain"_s);
}

void WebEngineEditorViewTests::requestsThatAreGivenUpDoNoHarm()
{
    Fixture f;
    f.bucket.write(u"assets/stor.png"_s, png(31) + QByteArray(20'000'000, '\0'));

    for (int round = 0; round < 10; ++round) {
        static_cast<void>(f.value(u"(() => { const image = new Image(); image.src = 'assets/stor.png?%1';"
                                  "image.src = ''; })()"_s.arg(round)));
    }

    QCOMPARE(f.widthOfImage(u"assets/stor.png"_s), 31);
}

void WebEngineEditorViewTests::theContextMenuIsSwedish()
{
    Fixture f;
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
