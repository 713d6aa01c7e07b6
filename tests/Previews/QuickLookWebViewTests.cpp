#include "Previews/QuickLookWebView.h"

#include "Fakes/Bucket.h"
#include "Support/EngineTest.h"
#include "Support/Window.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace wendlore {

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
