#include "Previews/QuickLookWebView.h"

#include "Fakes/Bucket.h"
#include "Support/DamagedFiles.h"
#include "Support/EngineTest.h"
#include "Support/SampleFiles.h"
#include "Support/Window.h"

#include <QRandomGenerator>
#include <QSignalSpy>
#include <QWebEngineSettings>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// How many damaged files stand on one page.
constexpr int perPage = 25;
/// How long a page with damaged films may play them, in milliseconds; some say that they take hours.
int playingTime()
{
    return qEnvironmentVariableIsSet("LONG") ? 1000 : 200;
}

/// Plays what can be played, and says whether the engine has come to an end with everything on the page.
const QString isDone = uR"((() => {
    const media = [...document.querySelectorAll('audio, video')];
    for (const medium of media.filter(medium => medium.readyState > 1 && medium.paused && !medium.ended)) {
        medium.muted = true;
        medium.play().catch(() => {});
    }
    return media.every(medium => medium.error || medium.ended) && [...document.images].every(image => image.complete) &&
        document.fonts.status === 'loaded';
})())"_s;

/// A page with damaged copies of a file, each in the element that the product shows such files in.
QuickLookPage pageOf(const QByteArray& bytes, const QByteArray& mimeType, int count, QRandomGenerator& random)
{
    QuickLookPage page;
    for (int copy = 0; copy < count; ++copy) {
        const QByteArray number = QByteArray::number(copy);
        page.resources.insert(QString::fromLatin1(number), {damagedCopy(bytes, random), mimeType});
        if (mimeType.startsWith("image/"))
            page.body += "<img src='r/" + number + "'>";
        else if (mimeType.startsWith("font/"))
            page.body += "<style>@font-face{font-family:s" + number + ";src:url(r/" + number +
                         ")}</style><p style='font-family:s" + number + "'>Flygande";
        else
            page.body += "<" + mimeType.split('/').first() + " controls preload=auto width=60 src='r/" +
                         number + "'></" + mimeType.split('/').first() + ">";
    }
    return page;
}

/// Waits until the engine is done with the page, at most `milliseconds`, or has died over it.
void waitUntilDone(QuickLookWebView& view, const QSignalSpy& failed, int milliseconds)
{
    const auto done = std::make_shared<bool>(false);
    static_cast<void>(waitFor(
        [&] {
            view.page()->runJavaScript(isDone, [done](const QVariant& answer) { *done = answer.toBool(); });
            return *done || !failed.isEmpty();
        },
        milliseconds));
}

} // namespace

/// The files that the web engine itself reads, damaged again and again.
class QuickLookWebViewDamageTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void damagedFilesDoNoHarm_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("mimeType");
        QTest::newRow("drawing") << drawing() << QByteArray("image/svg+xml");
        QTest::newRow("font") << systemFont() << QByteArray("font/ttf");
        QTest::newRow("sound") << silence() << QByteArray("audio/wav");
        QTest::newRow("mp3") << mediaFile(u"a.mp3"_s) << QByteArray("audio/mpeg");
        QTest::newRow("ogg") << mediaFile(u"a.ogg"_s) << QByteArray("audio/ogg");
        QTest::newRow("flac") << mediaFile(u"a.flac"_s) << QByteArray("audio/flac");
        QTest::newRow("mp4") << mediaFile(u"a.mp4"_s) << QByteArray("video/mp4");
        QTest::newRow("webm") << mediaFile(u"a.webm"_s) << QByteArray("video/webm");
    }

    void damagedFilesDoNoHarm()
    {
        QFETCH(const QByteArray, bytes);
        QFETCH(const QByteArray, mimeType);
        const bool isPlayed = !mimeType.startsWith("image/") && !mimeType.startsWith("font/");
        QRandomGenerator random(11);
        int deaths = 0;
        for (int left = qEnvironmentVariableIsSet("LONG") ? 2000 : 8; left > 0; left -= perPage) {
            QuickLookWebView view(pageOf(bytes, mimeType, std::min(left, perPage), random));
            view.page()->settings()->setAttribute(QWebEngineSettings::JavascriptEnabled, true);
            view.page()->settings()->setAttribute(QWebEngineSettings::PlaybackRequiresUserGesture, false);
            const QSignalSpy loaded(view.page(), &QWebEnginePage::loadFinished);
            const QSignalSpy failed(&view, &QuickLookWebView::failed);
            showAt(view, {300, 200});
            WAIT_VERIFY(!loaded.isEmpty() || !failed.isEmpty());
            waitUntilDone(view, failed, isPlayed ? playingTime() : patience);
            deaths += int(failed.size());
        }
        if (deaths > 0)
            qInfo("the engine's process died %d times, and nothing else did", deaths);

        QuickLookPage page;
        page.body = "<p>Hel";
        QuickLookWebView view(std::move(page));
        showAt(view, {300, 200});
        QCOMPARE(shownText(view), u"Hel"_s);
    }
};

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(QuickLookWebViewDamageTests)
#include "QuickLookWebViewDamageTests.moc"
