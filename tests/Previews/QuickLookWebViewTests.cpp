#include "Previews/QuickLookWebView.h"

#include "Fakes/Bucket.h"
#include "Previews/QuickLookDecoding.h"
#include "Support/EngineTest.h"
#include "Support/SampleFiles.h"
#include "Support/Window.h"

#include <QtEndian>
#include <QWebEngineSettings>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// Plays what is on the page, and says how far it is.
const QString play = uR"((() => {
    const medium = document.querySelector('audio, video');
    if (medium && medium.paused && !medium.ended) {
        medium.muted = true;
        medium.play().catch(() => {});
    }
    return !medium ? 'nothing' : medium.error ? document.querySelector('[aria-label]').ariaLabel + ': ' + medium.error.message : medium.currentTime > 0 ? 'played' : 'not yet';
})())"_s;

/// Plays the last half second of what is on the page, and says how many seconds the whole is once it is over.
const QString playTheEnd = uR"((() => {
    const medium = document.querySelector('audio, video');
    if (medium.error || !(medium.duration > 0))
        return medium.error ? medium.error.message : 'not yet';
    if (!medium.dataset.isSought) {
        medium.dataset.isSought = true;
        medium.muted = true;
        medium.currentTime = medium.duration - 0.5;
        medium.play().catch(() => {});
    }
    return medium.ended ? String(Math.round(medium.duration)) : 'not yet';
})())"_s;

/// A sound of many megabytes, `seconds` long.
QByteArray longSound(int seconds)
{
    constexpr int header = 44;
    const QByteArray second = silence().mid(header);
    QByteArray sound = silence().first(header) + second.repeated(seconds);
    qToLittleEndian<quint32>(quint32(sound.size() - 8), sound.data() + 4);
    qToLittleEndian<quint32>(quint32(sound.size() - header), sound.data() + header - 4);
    return sound;
}

/// A page that is played as soon as somebody asks for its state.
class Playing final
{
public:
    explicit Playing(const QuickLookPage& page)
        : m_view(std::make_unique<QuickLookWebView>(page))
    {
        m_view->page()->settings()->setAttribute(QWebEngineSettings::JavascriptEnabled, true);
        m_view->page()->settings()->setAttribute(QWebEngineSettings::PlaybackRequiresUserGesture, false);
        showAt(*m_view, {400, 300});
    }

    /// What the page said last to `script`; asks again.
    QString state(const QString& script = play)
    {
        m_view->page()->runJavaScript(script,
                                      [said = m_said](const QVariant& answer) { *said = answer.toString(); });
        return *m_said;
    }

private:
    std::unique_ptr<QuickLookWebView> m_view;
    std::shared_ptr<QString> m_said = std::make_shared<QString>();
};

} // namespace

class QuickLookWebViewTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void aPageReachesNothingAndRunsNothing()
    {
        const Bucket bucket{{"hemlig.txt", "hemlig"}};
        QuickLookPage page;
        page.body = "<script>document.body.append('skript')</script><p>text</p><img src='file://" +
                    bucket.file(u"hemlig.txt"_s).bytes() +
                    "'><meta http-equiv=refresh content='0;url=file:///etc/passwd'>"
                    "<iframe src='file:///etc/passwd'></iframe><img src='https://example.org/a.png'>";
        QuickLookWebView view(page);
        showAt(view, {400, 300});

        QCOMPARE(shownText(view), u"text"_s);
        QCOMPARE(view.url(), QUrl(u"quicklook://page/"_s));
    }

    void soundAndFilmArePlayed()
    {
        const Bucket bucket;
        std::vector<Playing> playing;
        for (const QString& name : {u"a.mp3"_s, u"a.m4a"_s, u"a.ogg"_s, u"a.opus"_s, u"a.flac"_s, u"a.wav"_s,
                                    u"a.mp4"_s, u"a.mov"_s, u"a.webm"_s, u"a.mkv"_s, u"a.ogv"_s}) {
            bucket.write(name, mediaFile(name));
            const auto page = decodeFilePreview(bucket.file(name), QuickLookLimits());
            QVERIFY(page);
            playing.emplace_back(*page);
        }
        for (Playing& medium : playing)
            WAIT_COMPARE(medium.state(), u"played"_s);
    }

    void aLongSoundCanBeGoneThrough()
    {
        constexpr int seconds = 8400;
        const Bucket bucket;
        bucket.write(u"a.wav"_s, longSound(seconds));
        QVERIFY(QFileInfo(bucket.file(u"a.wav"_s).path()).size() > 60'000'000);
        const auto page = decodeFilePreview(bucket.file(u"a.wav"_s), QuickLookLimits());
        QVERIFY(page);
        Playing sound(*page);
        WAIT_COMPARE(sound.state(playTheEnd), QString::number(seconds));
    }

    /// Of long ones only the beginning is changed for the engine.
    void aSoundThatIsChangedInItsBeginningIsPlayedToItsEnd()
    {
        const QByteArray whole = mediaFile(u"a.ogg"_s);
        const Bucket bucket;
        bucket.write(u"a.ogg"_s, whole);
        auto page = decodeFilePreview(bucket.file(u"a.ogg"_s), QuickLookLimits());
        QVERIFY(page);
        QVERIFY(page->streamedBeginning != whole);
        page->streamedBeginning.truncate(whole.size() / 2);
        Playing sound(*page);
        WAIT_COMPARE(sound.state(), u"played"_s);
        WAIT_COMPARE(sound.state(u"String(document.querySelector('audio').ended)"_s), u"true"_s);
    }

    void aPageOfManyMegabytesIsShown()
    {
        QuickLookPage page;
        page.body = "<p hidden>" + QByteArray("en rad\n").repeated(600'000) + "<p>Sist";
        QuickLookWebView view(page);
        showAt(view, {400, 300});

        QCOMPARE(shownText(view), u"Sist"_s);
    }
};

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(QuickLookWebViewTests)
#include "QuickLookWebViewTests.moc"
