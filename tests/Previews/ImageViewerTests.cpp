#include "Previews/ImageViewer.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Look/SymbolView.h"
#include "Previews/ZoomableImage.h"
#include "State/AppState.h"
#include "Support/Window.h"

#include <QLabel>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// One image file on screen.
class Viewed final
{
public:
    explicit Viewed(const QString& name)
        : state(services.services())
    {
        QImage image(400, 300, QImage::Format_RGB32);
        image.fill(Qt::red);
        image.save(bucket.file(u"Bild.png"_s).path());
        bucket.write(u"Trasig.png"_s, "hej");
        show(name);
    }

    void show(const QString& name)
    {
        view = std::make_unique<ImageViewer>(state, bucket.file(name));
        showAt(*view, {1000, 800});
    }
    [[nodiscard]] ZoomableImage* image() const { return view->findChild<ZoomableImage*>(); }
    [[nodiscard]] QString message() const
    {
        for (const QLabel* label : view->findChildren<QLabel*>()) {
            if (label->isVisible() && !label->text().isEmpty())
                return label->text();
        }
        return {};
    }

    Bucket bucket;
    FakeServices services;
    AppState state;
    std::unique_ptr<ImageViewer> view;
};

} // namespace

class ImageViewerTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void anImageIsShownOnceItIsDecoded()
    {
        Viewed viewed(u"Bild.png"_s);
        QVERIFY(!viewed.image());
        QVERIFY(childNamed(*viewed.view, u"Laddar"_s)->isVisible());

        viewed.services.scheduler.finishBackgroundWork();

        QVERIFY(viewed.image());
        QCOMPARE(viewed.image()->magnification(), 1.0);
        QCOMPARE(viewed.image()->accessibleName(), u"Bild.png"_s);
        QCOMPARE(pictureOf(*viewed.view).pixelColor(10, 10), QColor(Qt::red));
    }

    void aLargePhotographIsSketchedUntilItIsDecoded()
    {
        Viewed viewed(u"Bild.png"_s);
        QImage large(4000, 3000, QImage::Format_RGB32);
        large.fill(Qt::red);
        QVERIFY(large.save(viewed.bucket.file(u"Stor.jpg"_s).path()));
        viewed.show(u"Stor.jpg"_s);

        viewed.services.scheduler.finishBackgroundWork();

        QVERIFY(viewed.image());
        QCOMPARE(viewed.image()->magnification(), 0.25);
        QVERIFY(pictureOf(*viewed.view).pixelColor(500, 300).red() > 200);
        QCOMPARE(viewed.services.scheduler.pendingBackgroundWork(), 0);
    }

    void theCloudProgramIsAskedBeforeTheFileIsRead()
    {
        Viewed viewed(u"Bild.png"_s);
        viewed.services.scheduler.finishBackgroundWork();
        QCOMPARE(viewed.services.coordinator.downloads, QList{viewed.bucket.file(u"Bild.png"_s)});
    }

    void whatIsNoImageGivesTheMessage_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("damaged") << u"Trasig.png"_s;
        QTest::newRow("gone") << u"Borta.png"_s;
    }

    void whatIsNoImageGivesTheMessage()
    {
        QFETCH(QString, name);
        Viewed viewed(name);
        viewed.services.scheduler.finishBackgroundWork();
        QCOMPARE(viewed.message(), u"Kunde inte ladda bilden"_s);
        QCOMPARE(viewed.view->findChild<SymbolView*>()->name(), u"exclamationmark.triangle"_s);
    }

    void aFileTooLargeToReadGivesTheMessage()
    {
        Viewed viewed(u"Bild.png"_s);
        viewed.bucket.write(u"Stor.png"_s, "");
        QVERIFY(QFile::resize(viewed.bucket.file(u"Stor.png"_s).path(), 600LL << 20)); // a hole in the disk
        viewed.show(u"Stor.png"_s);
        viewed.services.scheduler.finishBackgroundWork();
        QCOMPARE(viewed.message(), u"Kunde inte ladda bilden"_s);
    }

    void theImageOfAViewerThatIsGoneIsDropped()
    {
        Viewed viewed(u"Bild.png"_s);
        viewed.show(u"Trasig.png"_s);

        viewed.services.scheduler.finishBackgroundWork();

        QVERIFY(!viewed.image());
        QCOMPARE(viewed.message(), u"Kunde inte ladda bilden"_s);
    }
};

QTEST_MAIN(ImageViewerTests)
#include "ImageViewerTests.moc"
