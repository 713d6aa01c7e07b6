#include "Previews/QuickLookRepresentable.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Previews/FileCard.h"
#include "Previews/QuickLookPreview.h"
#include "Previews/QuickLookView.h"
#include "Previews/QuickLookWebView.h"
#include "State/AppState.h"
#include "Support/EngineTest.h"
#include "Support/SampleFiles.h"
#include "Support/Window.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace wendlore {

namespace {

/// The generic preview of one file on screen; nothing of it is loaded until the test says so.
class Shown final
{
public:
    explicit Shown(const FileURL& file)
        : state(services.services())
        , view(std::make_unique<QuickLookView>(state, file))
    {
        showAt(*view, {900, 600});
    }

    QuickLookRepresentable& representable() { return view->representable(); }
    void finish() { services.scheduler.finishBackgroundWork(); }
    [[nodiscard]] QuickLookWebView* webView() const { return view->findChild<QuickLookWebView*>(); }
    [[nodiscard]] bool showsCard() const { return view->findChild<FileCard*>() != nullptr; }

    FakeServices services;
    AppState state;
    std::unique_ptr<QuickLookView> view;
};

} // namespace

class QuickLookRepresentableTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void theCardStandsThereUntilThePreviewIsReady()
    {
        const Bucket bucket{{"a.json", "{\"namn\": 1}"}};
        Shown shown(bucket.file(u"a.json"_s));
        QVERIFY(shown.showsCard());

        shown.finish();

        QVERIFY(!shown.showsCard());
        QCOMPARE(shownText(*shown.webView()), u"{\"namn\": 1}"_s);
        QCOMPARE(shown.webView()->size(), shown.view->size());
    }

    void theSearchForAPageToScaleEndsAfterSixtyAttempts()
    {
        const Bucket bucket;
        bucket.write(u"a.bin"_s, QByteArray("\0\1", 2));
        Shown shown(bucket.file(u"a.bin"_s));
        shown.finish();
        QCOMPARE(shown.representable().pollAttempts(), 1);

        shown.services.scheduler.advance(5800ms);
        QCOMPARE(shown.representable().pollAttempts(), 59);
        shown.services.scheduler.advance(60s);

        QCOMPARE(shown.representable().pollAttempts(), 60);
        QCOMPARE(shown.services.scheduler.pendingTasks(), 0);
        QVERIFY(!shown.representable().webView());
    }

    void aPageOfItsOwnWidthIsScaledToTheWindow()
    {
        const Bucket bucket;
        bucket.write(u"a.ttf"_s, systemFont());
        Shown shown(bucket.file(u"a.ttf"_s));
        shown.finish();
        QVERIFY(shown.representable().webView());
        QCOMPARE(shown.webView()->zoomFactor(), 1.0);

        shown.view->resize(1350, 600);
        QCOMPARE(shown.webView()->width(), 1350);
        QCOMPARE(shown.webView()->zoomFactor(), 1.5);
        shown.view->resize(450, 600);
        QCOMPARE(shown.webView()->zoomFactor(), 0.5);

        shown.webView()->setZoomFactor(0.5015);
        shown.view->resize(450, 600);
        QCOMPARE(shown.webView()->zoomFactor(), 0.5015);
    }

    void anotherFileStartsOver()
    {
        const Bucket bucket{{"a.json", "1"}, {"b.json", "2"}};
        Shown shown(bucket.file(u"a.json"_s));
        shown.finish();
        shown.services.scheduler.advance(1s);

        shown.representable().update(bucket.file(u"b.json"_s));

        QVERIFY(shown.showsCard());
        QCOMPARE(shown.representable().pollAttempts(), 1);
        shown.finish();
        QCOMPARE(shownText(*shown.webView()), u"2"_s);
    }

    void aResultThatComesTooLateIsDropped()
    {
        const Bucket bucket{{"a.json", "1"}, {"b.bin", ""}};
        Shown shown(bucket.file(u"a.json"_s));

        shown.representable().update(bucket.file(u"b.bin"_s));
        shown.finish();

        QVERIFY(shown.showsCard());
        QVERIFY(!shown.webView());
    }

    void aPreviewThatIsLeftIsClosedAndParked()
    {
        const Bucket bucket{{"a.json", "1"}};
        Shown shown(bucket.file(u"a.json"_s));
        shown.finish();
        QuickLookPreview* preview = shown.representable().preview();

        shown.view.reset();

        QCOMPARE(QuickLookGraveyard::parked.back(), preview);
        QVERIFY(!preview->hasItem());
        QVERIFY(!preview->isVisible());
        QCOMPARE(shown.services.scheduler.pendingTasks(), 0);
    }
};

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(QuickLookRepresentableTests)
#include "QuickLookRepresentableTests.moc"
