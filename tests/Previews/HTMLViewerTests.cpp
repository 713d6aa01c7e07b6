#include "Previews/HTMLViewer.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Look/SymbolView.h"
#include "Previews/FindBar.h"
#include "State/AppState.h"
#include "Support/EngineTest.h"
#include "Support/LoopbackSite.h"
#include "Support/Window.h"

#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QWebEngineDownloadRequest>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineView>

namespace wendlore {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// HTML files of one bucket, shown by the real engine with a clock that the test turns.
class Shown final
{
public:
    explicit Shown(const QByteArray& html)
        : state(services.services())
    {
        bucket.write(u"Sida.html"_s, html);
        bucket.write(u"Annan.html"_s, "<p>Annan");
        state.addVault(bucket.root());
        open(u"Sida.html"_s);
    }

    void open(const QString& name)
    {
        view = std::make_unique<HTMLViewer>(state, bucket.file(name));
        showAt(*view, {800, 600});
        services.scheduler.finishBackgroundWork();
        if (view->webView())
            loaded = std::make_unique<QSignalSpy>(view->webView()->page(), &QWebEnginePage::loadFinished);
    }
    /// Waits until the page is there.
    [[nodiscard]] bool finish() const { return !loaded->isEmpty() || loaded->wait(patience); }
    /// What `expression` is in the page.
    [[nodiscard]] QVariant value(const QString& expression) const
    {
        std::optional<QVariant> answer;
        view->webView()->page()->runJavaScript(expression,
                                               [&answer](const QVariant& value) { answer = value; });
        static_cast<void>(QTest::qWaitFor([&answer] { return answer.has_value(); }, patience));
        return answer.value_or(QVariant());
    }
    void click(const QString& id) const
    {
        static_cast<void>(value(u"document.getElementById('%1').click()"_s.arg(id)));
    }
    [[nodiscard]] bool says(const QString& text) const
    {
        for (const QLabel* label : view->findChildren<QLabel*>()) {
            if (label->isVisible() && label->text() == text)
                return true;
        }
        return false;
    }
    [[nodiscard]] bool isFallback() const { return says(u"Kunde inte visa förhandsvisningen"_s); }

    Bucket bucket;
    FakeServices services;
    AppState state;
    std::unique_ptr<HTMLViewer> view;
    std::unique_ptr<QSignalSpy> loaded;
};

} // namespace

class HTMLViewerTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void aPageIsShownWithWhatLiesBesideIt()
    {
        Shown shown("<p id=p>H\xc3\xa4r</p><link rel=stylesheet href='stil/a.css'><img id=i src='bild.png'>");
        QImage image(3, 2, QImage::Format_RGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(shown.bucket.file(u"bild.png"_s).path()));
        shown.bucket.write(u"stil/a.css"_s, "p { color: rgb(1, 2, 3) }");
        shown.open(u"Sida.html"_s);

        QVERIFY(shown.finish());

        QCOMPARE(shown.value(u"p.textContent"_s), u"Här"_s);
        QCOMPARE(shown.value(u"getComputedStyle(p).color"_s), u"rgb(1, 2, 3)"_s);
        QCOMPARE(shown.value(u"i.naturalWidth"_s).toInt(), 3);
        QCOMPARE(shown.services.coordinator.downloads.first(), shown.bucket.file(u"Sida.html"_s));
    }

    void aPageCanBeSearchedAndShownLarger()
    {
        const Shown shown("<p>text");
        QVERIFY(FindBar::seenIn(*shown.view));
        QCOMPARE(ZoomableView::seenIn(*shown.view), dynamic_cast<ZoomableView*>(shown.view->webView()));
    }

    void bytesThatAreNoUtf8AreLatin1()
    {
        Shown shown("<meta charset=utf-8><p id=p>sm\xe5tt");
        QVERIFY(shown.finish());
        QCOMPARE(shown.value(u"p.textContent"_s), u"smått"_s);
    }

    void aLargePageIsShownWhole()
    {
        const QByteArray html = "<p hidden>" + QByteArray("F&ouml;r storlekens skull. ").repeated(200'000) +
                                "<p id=last>Sist</p>";
        QVERIFY(html.size() > 4'000'000);
        Shown shown(html);
        QVERIFY(shown.finish());
        QCOMPARE(shown.value(u"last.textContent"_s), u"Sist"_s);
    }

    void whileTheFileIsReadTheIndicatorSaysSo()
    {
        Shown shown("<p>Hej");
        shown.view = std::make_unique<HTMLViewer>(shown.state, shown.bucket.file(u"Sida.html"_s));
        showAt(*shown.view, {800, 600});
        QVERIFY(shown.says(u"Laddar…"_s));
    }

    void aMissingFileGivesTheMessage()
    {
        Shown shown("");
        shown.open(u"Borta.html"_s);
        QVERIFY(shown.says(u"Kunde inte ladda HTML-filen"_s));
        QCOMPARE(shown.services.scheduler.pendingTasks(), 0);
    }

    void nothingIsDownloaded_data()
    {
        QTest::addColumn<QByteArray>("link");
        QTest::newRow("what a script has made")
            << QByteArray("<a id=a download='skript.sh'>x</a><script>"
                          "a.href = URL.createObjectURL(new Blob(['rm']))</script>");
        QTest::newRow("text in the address")
            << QByteArray("<a id=a download='text.txt' href='data:text/plain,hej'>x</a>");
    }

    void nothingIsDownloaded()
    {
        QFETCH(const QByteArray, link);
        const QTemporaryDir folder;
        const Shown shown("<p id=p>Kvar</p>" + link);
        QVERIFY(shown.finish());
        QWebEngineProfile* const profile = shown.view->webView()->page()->profile();
        profile->setDownloadPath(folder.path());
        std::optional<QWebEngineDownloadRequest::DownloadState> state;
        connect(profile, &QWebEngineProfile::downloadRequested, this,
                [&state](const QWebEngineDownloadRequest* request) { state = request->state(); });

        shown.click(u"a"_s);
        QTRY_VERIFY_WITH_TIMEOUT(state.has_value(), patience);

        // Nobody who was asked before has taken it on.
        QCOMPARE(*state, QWebEngineDownloadRequest::DownloadRequested);
        QCOMPARE(shown.value(u"p.textContent"_s), u"Kvar"_s);
        QVERIFY(QDir(folder.path()).isEmpty());
        QCOMPARE(shown.bucket.names(), (QStringList{u"Annan.html"_s, u"Sida.html"_s}));
    }

    void aLinkToBeDownloadedOpensInTheProgram()
    {
        const Shown shown("<a id=a download href='Annan.html'>x</a>");
        QVERIFY(shown.finish());

        shown.click(u"a"_s);

        QTRY_COMPARE_WITH_TIMEOUT(shown.state.selectedFile(), shown.bucket.file(u"Annan.html"_s), patience);
        QCOMPARE(shown.bucket.names(), (QStringList{u"Annan.html"_s, u"Sida.html"_s}));
    }

    void aWebLinkOpensTheBrowserAndThePageStays()
    {
        Shown shown("<p id=p>Kvar</p><a id=a href='https://example.org/x'>x</a>"
                    "<a id=b href='mailto:anna@example.org'>b</a>");
        QVERIFY(shown.finish());

        shown.click(u"a"_s);
        shown.click(u"b"_s);

        QTRY_COMPARE_WITH_TIMEOUT(
            shown.services.workspace.addresses,
            (QList{QUrl(u"https://example.org/x"_s), QUrl(u"mailto:anna@example.org"_s)}), patience);
        QCOMPARE(shown.value(u"p.textContent"_s), u"Kvar"_s);
    }

    void aLinkForAWindowOfItsOwnOpensTheBrowserOnce()
    {
        Shown shown("<a style='position:fixed;inset:0' target=_blank href='https://example.org/ny'>c</a>"
                    "<p id=p>Kvar</p>");
        QVERIFY(shown.finish());
        // Clicks are for what is painted.
        static_cast<void>(shown.value(
            u"requestAnimationFrame(() => requestAnimationFrame(() => { window.isPainted = true }))"_s));
        WAIT_VERIFY(shown.value(u"window.isPainted"_s).toBool());

        QWidget* const page = shown.view->webView()->focusProxy();
        QTest::mouseClick(page, Qt::LeftButton, {}, page->rect().center());

        WAIT_VERIFY(!shown.services.workspace.addresses.isEmpty());
        QCOMPARE(shown.services.workspace.addresses, QList{QUrl(u"https://example.org/ny"_s)});
        QCOMPARE(shown.value(u"p.textContent"_s), u"Kvar"_s);
        QCOMPARE(shown.services.workspace.addresses.size(), 1);
    }

    void aLinkToAnotherProgramStartsNone()
    {
        Shown shown("<p id=p>Kvar</p><a id=a href='tel:112'>a</a><a id=b href='https://example.org/'>b</a>");
        QVERIFY(shown.finish());

        shown.click(u"a"_s);
        shown.click(u"b"_s);

        QTRY_COMPARE_WITH_TIMEOUT(shown.services.workspace.addresses, QList{QUrl(u"https://example.org/"_s)},
                                  patience);
        QCOMPARE(shown.value(u"p.textContent"_s), u"Kvar"_s);
    }

    void aLinkToAnotherFileOpensItInTheProgram()
    {
        Shown shown("<a id=a href='Annan.html'>a</a>");
        QVERIFY(shown.finish());

        shown.click(u"a"_s);

        QTRY_COMPARE_WITH_TIMEOUT(shown.state.selectedFile(), shown.bucket.file(u"Annan.html"_s), patience);
        QVERIFY(shown.services.workspace.addresses.isEmpty());
    }

    void anAnchorScrollsWithinThePage()
    {
        Shown shown("<a id=a href='#del'>a</a><div style='height:5000px'></div><p id=del>Del</p>");
        QVERIFY(shown.finish());
        const auto selected = shown.state.selectedFile();

        shown.click(u"a"_s);

        QTRY_VERIFY_WITH_TIMEOUT(shown.value(u"scrollY"_s).toInt() > 3000, patience);
        QCOMPARE(shown.state.selectedFile(), selected);
    }

    void aPageThatFinishesInTimeStays()
    {
        LoopbackSite site([](const auto&) { return QByteArray(); });
        Shown shown("<img src='" + site.origin().toLatin1() + "/bild.png'>");
        QTRY_VERIFY_WITH_TIMEOUT(!site.requests.isEmpty(), patience);

        shown.services.scheduler.advance(7900ms);
        QVERIFY(!shown.isFallback());
        site.letGo();
        QVERIFY(shown.finish());
        shown.services.scheduler.advance(1h);

        QVERIFY(!shown.isFallback());
    }

    void aPageThatIsStillLoadingGivesWay()
    {
        LoopbackSite site([](const auto&) { return QByteArray(); });
        Shown shown("<img src='" + site.origin().toLatin1() + "/bild.png'>");
        QTRY_VERIFY_WITH_TIMEOUT(!site.requests.isEmpty(), patience);

        shown.services.scheduler.advance(8s);

        QVERIFY(shown.isFallback());
        auto* symbol = shown.view->findChild<SymbolView*>();
        QCOMPARE(symbol->name(), u"exclamationmark.triangle"_s);
        QCOMPARE(symbol->size(), QSize(28, 28));
        site.letGo();
        QTRY_VERIFY_WITH_TIMEOUT(!shown.view->webView(), patience);
        QVERIFY(shown.isFallback());
        auto* open = shown.view->findChild<QPushButton*>();
        QCOMPARE(open->text(), u"Öppna i webbläsare"_s);
        open->click();
        QCOMPARE(shown.services.workspace.files, QList{shown.bucket.file(u"Sida.html"_s)});
    }

    void theTimeOutOfAFileThatWasLeftTouchesNoOther()
    {
        LoopbackSite site([](const auto&) { return QByteArray(); });
        Shown shown("<img src='" + site.origin().toLatin1() + "/bild.png'>");
        shown.services.scheduler.advance(7s);

        shown.open(u"Annan.html"_s);
        QVERIFY(shown.finish());
        shown.services.scheduler.advance(7s);

        QVERIFY(!shown.isFallback());
        site.letGo();
    }

    void scriptsReadNoOtherFile()
    {
        // A frame that is refused says nothing: one that is allowed, and asked for later, has then come.
        const QString attempts = uR"JS(
            const frame = address => new Promise(done => {
              const f = document.createElement('iframe');
              f.onload = () => done(f); f.src = address; document.body.append(f); });
            const element = (type, address) => new Promise((done, fail) => {
              const e = document.createElement(type);
              e.onload = () => done(e); e.onerror = fail; e.src = address; document.body.append(e); });
            const textOf = f => f.contentDocument.body.textContent || Promise.reject();
            const attempts = {
              'fetch': fetch('Annan.html').then(r => r.text()),
              'fetch a file': fetch('file:///etc/passwd').then(r => r.text()),
              'request': new Promise((done, fail) => { const r = new XMLHttpRequest();
                r.onload = () => done(r.responseText); r.onerror = fail; r.open('GET', 'Annan.html'); r.send(); }),
              'frame': frame('Annan.html').then(textOf),
              'frame of a file': Promise.race([frame('file:///etc/passwd').then(textOf),
                frame('Annan.html').then(() => frame('Annan.html')).then(() => Promise.reject())]),
              'pixels': element('img', 'bild.png').then(i => {
                const c = document.createElement('canvas').getContext('2d');
                c.drawImage(i, 0, 0); return c.getImageData(0, 0, 1, 1).data[0]; }),
              'script outside the bucket': element('script', '../../../../../../etc/hostname') };
            window.outcome = '';
            Promise.all(Object.entries(attempts).map(([name, attempt]) =>
              attempt.then(() => name + ': read', () => name + ': refused'))).then(all => outcome = all.join(', '));
            1)JS"_s;
        Shown shown("<body>");
        QImage image(3, 2, QImage::Format_RGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(shown.bucket.file(u"bild.png"_s).path()));
        QVERIFY(shown.finish());

        static_cast<void>(shown.value(attempts));

        QTRY_VERIFY_WITH_TIMEOUT(!shown.value(u"outcome"_s).toString().isEmpty(), patience);
        QCOMPARE(shown.value(u"outcome"_s).toString(),
                 u"fetch: refused, fetch a file: refused, request: refused, frame: refused, "
                 "frame of a file: refused, pixels: refused, script outside the bucket: refused"_s);
    }
};

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(HTMLViewerTests)
#include "HTMLViewerTests.moc"
