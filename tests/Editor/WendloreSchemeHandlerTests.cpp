#include "Editor/WendloreSchemeHandler.h"

#include "Support/EngineTest.h"
#include "Support/PageFixture.h"

#include <QBuffer>
#include <QImage>
#include <QWebEnginePage>
#include <QWebEngineView>

namespace wendlore {

using namespace Qt::StringLiterals;

namespace {

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

class WendloreSchemeHandlerTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePageIsServedFromItsFolder();
    void imagesOfTheBucketAreShown();
    void withoutABucketNoImageIsShown();
    void nothingElseOfTheBucketIsRead();
    void requestsThatAreGivenUpDoNoHarm();
};

void WendloreSchemeHandlerTests::thePageIsServedFromItsFolder()
{
    PageFixture f;

    f.messages.clear();
    f.view.load(u"vault://app/"_s);
    QTRY_VERIFY_WITH_TIMEOUT(f.has(u"ready"_s), patience);

    QCOMPARE(f.value(u"document.styleSheets.length > 0"_s), true);
    QCOMPARE(f.value(u"location.origin"_s), u"vault://app"_s);
}

void WendloreSchemeHandlerTests::imagesOfTheBucketAreShown()
{
    PageFixture f;
    f.bucket.write(u"assets/Bild 1.png"_s, png(31));

    QCOMPARE(f.widthOfImage(u"assets/Bild%201.png"_s), 31);
    QCOMPARE(f.widthOfImage(u"vault://app/assets/Bild 1.png"_s), 31);
    QCOMPARE(f.widthOfImage(u"assets/saknas.png"_s), -1);
}

void WendloreSchemeHandlerTests::withoutABucketNoImageIsShown()
{
    PageFixture f;
    f.bucket.write(u"assets/x.png"_s, png(31));
    f.vaultRoot.reset();

    QCOMPARE(f.widthOfImage(u"assets/x.png"_s), -1);
}

void WendloreSchemeHandlerTests::nothingElseOfTheBucketIsRead()
{
    PageFixture f;
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

void WendloreSchemeHandlerTests::requestsThatAreGivenUpDoNoHarm()
{
    PageFixture f;
    f.bucket.write(u"assets/stor.png"_s, png(31) + QByteArray(20'000'000, '\0'));

    for (int round = 0; round < 10; ++round) {
        static_cast<void>(f.value(u"(() => { const image = new Image(); image.src = 'assets/stor.png?%1';"
                                  "image.src = ''; })()"_s.arg(round)));
    }

    QCOMPARE(f.widthOfImage(u"assets/stor.png"_s), 31);
}

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(WendloreSchemeHandlerTests)
#include "WendloreSchemeHandlerTests.moc"
