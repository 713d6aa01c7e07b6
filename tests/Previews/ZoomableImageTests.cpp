#include "Previews/ZoomableImage.h"

#include "Look/Colors.h"
#include "Support/Window.h"

#include <QApplication>
#include <QClipboard>
#include <QNativeGestureEvent>
#include <QPointingDevice>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

using namespace wendlore;

namespace {

ImagePyramid image(int width, int height, Qt::GlobalColor color = Qt::red)
{
    QImage picture(width, height, QImage::Format_RGB32);
    picture.fill(color);
    return ImagePyramid(picture);
}

void turnWheel(ZoomableImage& view, QPointF position, int notches, Qt::KeyboardModifiers modifiers)
{
    QWheelEvent event(position, view.viewport()->mapToGlobal(position), {}, QPoint(0, 120 * notches),
                      Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view.viewport(), &event);
}

} // namespace

class ZoomableImageTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void aSmallImageStandsAtTheTopLeftInItsSize()
    {
        ZoomableImage view(image(400, 300));
        showAt(view, {1000, 800});

        QCOMPARE(view.magnification(), 1.0);
        const QImage seen = pictureOf(view);
        QCOMPARE(seen.pixelColor(0, 0), QColor(Qt::red));
        QCOMPARE(seen.pixelColor(399, 299), QColor(Qt::red));
        QVERIFY(seen.pixelColor(402, 10) != QColor(Qt::red));
        QVERIFY(seen.pixelColor(10, 302) != QColor(Qt::red));
    }

    void aLargeImageIsWholeWithoutScrollBars()
    {
        ZoomableImage view(image(4000, 3000));
        showAt(view, {1000, 800});

        QCOMPARE(view.magnification(), 0.25);
        QCOMPARE(view.viewport()->size(), QSize(1000, 800));
        QCOMPARE(pictureOf(view).pixelColor(998, 748), QColor(Qt::red));
    }

    void aVeryWideImageShowsItsMiddleAtTheMinimum()
    {
        ZoomableImage view(image(30000, 10));
        showAt(view, {1000, 800});

        QCOMPARE(view.magnification(), 0.05);
        QCOMPARE(view.scrollPosition(), QPointF(250, 0));
    }

    void itStaysWholeUntilTheUserZooms()
    {
        ZoomableImage view(image(4000, 3000));
        showAt(view, {1000, 800});

        view.resize(2000, 1600);
        QTRY_COMPARE(view.magnification(), 0.5);
        QTest::keyClick(&view, Qt::Key_1);
        QCOMPARE(view.magnification(), 1.0);
        view.resize(1000, 800);

        QTRY_COMPARE(view.viewport()->width() / 100, 9);
        QCOMPARE(view.magnification(), 1.0);
        QTest::keyClick(&view, Qt::Key_0);
        QCOMPARE(view.magnification(), 0.25);
    }

    void theWheelWithControlZoomsAroundThePointer()
    {
        ZoomableImage view(image(4000, 3000));
        showAt(view, {1000, 750});
        const QPointF pointer(800, 300);
        const QPointF below = (view.scrollPosition() + pointer) / view.magnification();

        turnWheel(view, pointer, 6, Qt::ControlModifier);

        QVERIFY(view.magnification() > 0.5);
        const QPointF now = (view.scrollPosition() + pointer) / view.magnification();
        QVERIFY((now - below).manhattanLength() < 4);
    }

    void twoFingersOnATouchpadZoomAroundThePointer()
    {
        ZoomableImage view(image(4000, 3000));
        showAt(view, {1000, 750});
        const QPointF pointer(800, 300);
        const QPointF below = (view.scrollPosition() + pointer) / view.magnification();

        QNativeGestureEvent spread(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2,
                                   pointer, pointer, view.viewport()->mapToGlobal(pointer), 1.0, {});
        QApplication::sendEvent(view.viewport(), &spread);

        QCOMPARE(view.magnification(), 0.5);
        const QPointF now = (view.scrollPosition() + pointer) / view.magnification();
        QVERIFY((now - below).manhattanLength() < 4);
    }

    void twoFingersOnTheScreenZoom()
    {
        ZoomableImage view(image(4000, 3000));
        showAt(view, {1000, 750});
        const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
        QWidget* const area = view.viewport();
        const QPoint middle = area->rect().center();
        const auto spread = [&](int distance) {
            return std::pair(middle - QPoint(distance, 0), middle + QPoint(distance, 0));
        };

        const auto [left, right] = spread(100);
        QTest::touchEvent(area, screen.get()).press(0, left, area).press(1, right, area);
        for (int distance = 110; distance <= 200; distance += 10) {
            const auto [first, second] = spread(distance);
            QTest::touchEvent(area, screen.get()).move(0, first, area).move(1, second, area);
        }
        const auto [first, second] = spread(200);
        QTest::touchEvent(area, screen.get()).release(0, first, area).release(1, second, area);

        QVERIFY2(view.magnification() > 0.4 && view.magnification() < 0.6,
                 qPrintable(QString::number(view.magnification())));
    }

    void theWheelAlonePans()
    {
        ZoomableImage view(image(4000, 3000));
        showAt(view, {1000, 750});
        view.setMagnification(1.0, {0, 0});

        turnWheel(view, {100, 100}, -1, Qt::NoModifier);

        QVERIFY(view.verticalScrollBar()->value() > 0);
        QCOMPARE(view.magnification(), 1.0);
    }

    void draggingPans()
    {
        ZoomableImage view(image(4000, 3000));
        showAt(view, {1000, 750});
        view.setMagnification(1.0, {0, 0});

        QTest::mousePress(view.viewport(), Qt::LeftButton, {}, {500, 400});
        QTest::mouseMove(view.viewport(), {450, 370});
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, {450, 370});

        QCOMPARE(view.scrollPosition(), QPointF(50, 30));
    }

    void keysZoomWithinTheLimits()
    {
        ZoomableImage view(image(4000, 3000));
        showAt(view, {1000, 750});
        for (int press = 0; press < 40; ++press)
            QTest::keyClick(&view, Qt::Key_Plus, Qt::ControlModifier);
        QCOMPARE(view.magnification(), 20.0);
        for (int press = 0; press < 60; ++press)
            QTest::keyClick(&view, Qt::Key_Minus, Qt::ControlModifier);
        QCOMPARE(view.magnification(), 0.05);
    }

    void whatCanBeSeenThroughIsOnWhitePaper()
    {
        QImage lines(40, 40, QImage::Format_ARGB32_Premultiplied);
        lines.fill(Qt::transparent);
        lines.setPixelColor(20, 20, Qt::black);
        ZoomableImage view{ImagePyramid(lines)};
        view.setPalette(Colors::of(ColorScheme::dark).palette());
        showAt(view, {100, 100});

        const QImage picture = pictureOf(view);

        QCOMPARE(picture.pixelColor(5, 5), QColor(Qt::white));
        QCOMPARE(picture.pixelColor(20, 20), QColor(Qt::black));
        QVERIFY(picture.pixelColor(80, 80).lightness() < 100);
    }

    void theImageIsCopied()
    {
        ZoomableImage view(image(30, 20));
        showAt(view, {100, 100});

        QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);

        QCOMPARE(QApplication::clipboard()->image().size(), QSize(30, 20));
        QCOMPARE(QApplication::clipboard()->image().pixelColor(3, 3), QColor(Qt::red));
    }

    void itsZoomKeysAreNotTheWindows()
    {
        ZoomableImage view(image(40, 30));
        QKeyEvent plus(QEvent::ShortcutOverride, Qt::Key_Plus, Qt::ControlModifier);
        plus.ignore();
        QApplication::sendEvent(&view, &plus);
        QVERIFY(plus.isAccepted());
        QKeyEvent other(QEvent::ShortcutOverride, Qt::Key_N, Qt::ControlModifier);
        other.ignore();
        QApplication::sendEvent(&view, &other);
        QVERIFY(!other.isAccepted());
    }

    void aDoubleClickChangesBetweenWholeAndNatural()
    {
        ZoomableImage view(image(4000, 3000));
        showAt(view, {1000, 750});
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, {500, 300});
        QCOMPARE(view.magnification(), 1.0);
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, {500, 300});
        QCOMPARE(view.magnification(), 0.25);
    }

    void anotherPictureKeepsThePlace()
    {
        ZoomableImage view(image(4000, 3000));
        showAt(view, {1000, 750});
        view.setMagnification(1.0, {500, 300});
        const QPointF place = view.scrollPosition();

        view.setPicture(image(4000, 3000, Qt::blue));

        QCOMPARE(view.scrollPosition(), place);
        QCOMPARE(pictureOf(view).pixelColor(100, 100), QColor(Qt::blue));
    }
};

QTEST_MAIN(ZoomableImageTests)
#include "ZoomableImageTests.moc"
