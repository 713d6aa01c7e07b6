#include "Previews/QuickLookPreview.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Previews/FileCard.h"
#include "Previews/PDFKitView.h"
#include "Previews/QuickLookCache.h"
#include "Previews/QuickLookWebView.h"
#include "State/AppState.h"
#include "Support/EngineTest.h"
#include "Support/PdfFiles.h"
#include "Support/Window.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>

#include <csignal>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// A preview without a file yet; nothing is loaded until the test says so.
class Previewed final
{
public:
    Previewed()
        : state(services.services())
        , preview(state)
        , shown(&preview, &QuickLookPreview::contentShown)
    {}

    void finish() { services.scheduler.finishBackgroundWork(); }

    FakeServices services;
    AppState state;
    QuickLookPreview preview;
    QSignalSpy shown;
};

} // namespace

class QuickLookPreviewTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void theCardStaysForWhatCannotBeShown()
    {
        const Bucket bucket;
        bucket.write(u"a.bin"_s, QByteArray("\0\1", 2));
        Previewed it;

        it.preview.setItem(bucket.file(u"a.bin"_s));
        it.finish();

        QCOMPARE(it.shown.count(), 0);
        auto* card = it.preview.findChild<FileCard*>();
        QVERIFY(card);
        QTest::mouseClick(card->findChild<QPushButton*>(), Qt::LeftButton);
        QCOMPARE(it.services.workspace.files, QList{bucket.file(u"a.bin"_s)});
    }

    void aDocumentThatWasConvertedBeforeIsShownAsItsPages()
    {
        const Bucket bucket{{"a.docx", "x"}};
        qputenv("XDG_CACHE_HOME", bucket.folder(u"cache"_s).bytes());
        const QuickLookCache cache;
        QVERIFY(cache.keep(cache.placeOf(bucket.file(u"a.docx"_s), u"pdf"_s), pdfOf({u"Ett"_s, u"Två"_s})));
        Previewed it;

        it.preview.setItem(bucket.file(u"a.docx"_s));
        it.finish();

        QCOMPARE(it.shown.count(), 1);
        auto* pages = it.preview.findChild<PDFKitView*>();
        QVERIFY(pages);
        QCOMPARE(pages->pageCount(), 2);
        QCOMPARE(pages->accessibleName(), u"a.docx"_s);
    }

    void withoutAnOfficeProgramTheCardSaysWhatToDo()
    {
        const Bucket bucket{{"a.rtf", "{\\rtf1 a}"}};
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", bucket.root().bytes());
        Previewed it;

        it.preview.setItem(bucket.file(u"a.rtf"_s));
        it.finish();
        qputenv("PATH", path);

        const auto labels = it.preview.findChild<FileCard*>()->findChildren<QLabel*>();
        QVERIFY(std::ranges::any_of(labels, [](const QLabel* label) {
            return label->text().endsWith(u"Installera LibreOffice för att se dokumentet här."_s);
        }));
    }

    void aPageThatTheEngineDiesOverGivesWayToTheCard()
    {
        const Bucket bucket{{"a.json", "1"}};
        Previewed it;
        it.preview.setItem(bucket.file(u"a.json"_s));
        showAt(it.preview, {400, 300});
        it.finish();
        auto* view = it.preview.findChild<QuickLookWebView*>();
        QVERIFY(view && !it.preview.findChild<FileCard*>());
        QCOMPARE(shownText(*view), u"1"_s);

        QCOMPARE(::kill(pid_t(view->page()->renderProcessPid()), SIGKILL), 0);

        WAIT_VERIFY(it.preview.findChild<FileCard*>());
        QVERIFY(it.preview.hasItem());
    }

    void closingDropsTheWork()
    {
        const Bucket bucket{{"a.json", "1"}};
        Previewed it;

        it.preview.setItem(bucket.file(u"a.json"_s));
        QVERIFY(it.preview.hasItem());
        it.preview.close();
        it.finish();

        QVERIFY(!it.preview.hasItem());
        QVERIFY(it.preview.findChildren<QWidget*>().isEmpty());
    }
};

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(QuickLookPreviewTests)
#include "QuickLookPreviewTests.moc"
