#include "Previews/QuickLookPreview.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Previews/FileCard.h"
#include "Previews/PDFKitView.h"
#include "Previews/QuickLookCache.h"
#include "State/AppState.h"
#include "Support/EngineTest.h"
#include "Support/PdfFiles.h"
#include "Support/Window.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace wendlore {

class QuickLookPreviewTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void theCardStaysForWhatCannotBeShown()
    {
        const Bucket bucket;
        bucket.write(u"a.bin"_s, QByteArray("\0\1", 2));
        FakeServices services;
        AppState state(services.services());
        QuickLookPreview preview(state);
        const QSignalSpy shown(&preview, &QuickLookPreview::contentShown);

        preview.setItem(bucket.file(u"a.bin"_s));
        services.scheduler.finishBackgroundWork();

        QCOMPARE(shown.count(), 0);
        auto* card = preview.findChild<FileCard*>();
        QVERIFY(card);
        QTest::mouseClick(card->findChild<QPushButton*>(), Qt::LeftButton);
        QCOMPARE(services.workspace.files, QList{bucket.file(u"a.bin"_s)});
    }

    void aDocumentThatWasConvertedBeforeIsShownAsItsPages()
    {
        const Bucket bucket{{"a.docx", "x"}};
        qputenv("XDG_CACHE_HOME", bucket.folder(u"cache"_s).bytes());
        const QuickLookCache cache;
        QVERIFY(cache.keep(cache.placeOf(bucket.file(u"a.docx"_s), u"pdf"_s), pdfOf({u"Ett"_s, u"Två"_s})));
        FakeServices services;
        AppState state(services.services());
        QuickLookPreview preview(state);
        const QSignalSpy shown(&preview, &QuickLookPreview::contentShown);

        preview.setItem(bucket.file(u"a.docx"_s));
        services.scheduler.finishBackgroundWork();

        QCOMPARE(shown.count(), 1);
        auto* pages = preview.findChild<PDFKitView*>();
        QVERIFY(pages);
        QCOMPARE(pages->pageCount(), 2);
        QCOMPARE(pages->accessibleName(), u"a.docx"_s);
    }

    void withoutAnOfficeProgramTheCardSaysWhatToDo()
    {
        const Bucket bucket{{"a.rtf", "{\\rtf1 a}"}};
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", bucket.root().bytes());
        FakeServices services;
        AppState state(services.services());
        QuickLookPreview preview(state);

        preview.setItem(bucket.file(u"a.rtf"_s));
        services.scheduler.finishBackgroundWork();
        qputenv("PATH", path);

        const auto labels = preview.findChild<FileCard*>()->findChildren<QLabel*>();
        QVERIFY(std::ranges::any_of(labels, [](const QLabel* label) {
            return label->text().endsWith(u"Installera LibreOffice för att se dokumentet här."_s);
        }));
    }

    void closingDropsTheWork()
    {
        const Bucket bucket{{"a.json", "1"}};
        FakeServices services;
        AppState state(services.services());
        QuickLookPreview preview(state);

        preview.setItem(bucket.file(u"a.json"_s));
        QVERIFY(preview.hasItem());
        preview.close();
        services.scheduler.finishBackgroundWork();

        QVERIFY(!preview.hasItem());
        QVERIFY(preview.findChildren<QWidget*>().isEmpty());
    }
};

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(QuickLookPreviewTests)
#include "QuickLookPreviewTests.moc"
