#include "Previews/QuickLookPreview.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Previews/FileCard.h"
#include "State/AppState.h"
#include "Support/EngineTest.h"
#include "Support/Window.h"

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
