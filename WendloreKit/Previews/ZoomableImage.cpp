#include "Previews/ZoomableImage.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGestureEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QPinchGesture>
#include <QScrollBar>

#include <cmath>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr double keyStep = 1.25;
/// A notch of the wheel is 120.
constexpr double wheelStep = 1.0015;
/// From here on single pixels are what one wants to see.
constexpr double pixelScale = 4.0;
constexpr int arrowStep = 40;

} // namespace

ZoomableImage::ZoomableImage(ImagePyramid image, QWidget* parent)
    : QAbstractScrollArea(parent)
    , m_image(std::move(image))
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setBackgroundRole(QPalette::Base);
    viewport()->setAutoFillBackground(true);
    viewport()->grabGesture(Qt::PinchGesture);
    for (QScrollBar* bar : {horizontalScrollBar(), verticalScrollBar()})
        bar->setSingleStep(arrowStep);
}

void ZoomableImage::setPicture(ImagePyramid image)
{
    m_image = std::move(image);
    viewport()->update();
}

QPointF ZoomableImage::scrollPosition() const
{
    return QPointF(horizontalScrollBar()->value(), verticalScrollBar()->value());
}

void ZoomableImage::setMagnification(double scale, QPointF anchor)
{
    m_isFitted = false;
    apply(magnify({m_magnification, scrollPosition()}, scale, anchor));
}

void ZoomableImage::magnifyToFit()
{
    m_isFitted = true;
    // Of the room that there is without scroll bars: an image that fits needs none.
    if (const auto fitting = wendlore::magnifyToFit(m_image.size(), maximumViewportSize()))
        apply(*fitting);
}

void ZoomableImage::apply(const Magnification& magnification)
{
    m_magnification = magnification.scale;
    const QSize drawn = (QSizeF(m_image.size()) * m_magnification).toSize();
    // The bars come and go with their ranges, and the room that they take changes the ranges.
    for (int round = 0; round < 2; ++round) {
        const QSize room = viewport()->size();
        horizontalScrollBar()->setRange(0, std::max(0, drawn.width() - room.width()));
        verticalScrollBar()->setRange(0, std::max(0, drawn.height() - room.height()));
    }
    horizontalScrollBar()->setPageStep(viewport()->width());
    verticalScrollBar()->setPageStep(viewport()->height());
    horizontalScrollBar()->setValue(qRound(magnification.scroll.x()));
    verticalScrollBar()->setValue(qRound(magnification.scroll.y()));
    updateCursor();
    viewport()->update();
}

void ZoomableImage::updateCursor()
{
    const bool canPan = horizontalScrollBar()->maximum() > 0 || verticalScrollBar()->maximum() > 0;
    if (m_dragged)
        viewport()->setCursor(Qt::ClosedHandCursor);
    else if (canPan)
        viewport()->setCursor(Qt::OpenHandCursor);
    else
        viewport()->unsetCursor();
}

void ZoomableImage::zoomBy(double factor, QPointF anchor)
{
    setMagnification(m_magnification * factor, anchor);
}

void ZoomableImage::zoomIn()
{
    zoomBy(keyStep, middle());
}

void ZoomableImage::zoomOut()
{
    zoomBy(1 / keyStep, middle());
}

QPointF ZoomableImage::middle() const
{
    return QRectF(viewport()->rect()).center();
}

void ZoomableImage::paintEvent(QPaintEvent* event)
{
    if (m_image.isEmpty())
        return;
    QPainter painter(viewport());
    const double pixelRatio = viewport()->devicePixelRatioF();
    const QImage& level = m_image.levelFor(m_magnification * pixelRatio);
    const QSizeF drawn = QSizeF(m_image.size()) * m_magnification;
    const QRectF whole(-scrollPosition(), drawn);
    // Only the part that shows: scaling the rest would be work for nothing.
    const QRectF target = whole.intersected(event->rect().adjusted(-1, -1, 1, 1));
    const double across = level.width() / drawn.width();
    const double down = level.height() / drawn.height();
    const QRectF source((target.x() - whole.x()) * across, (target.y() - whole.y()) * down,
                        target.width() * across, target.height() * down);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, m_magnification * pixelRatio < pixelScale);
    // Most that can be seen through was drawn for white paper; black lines would not show in the dark.
    if (level.hasAlphaChannel())
        painter.fillRect(target, Qt::white);
    painter.drawImage(target, level, source);
}

void ZoomableImage::resizeEvent(QResizeEvent*)
{
    if (m_isFitted)
        magnifyToFit();
    else
        apply({m_magnification, scrollPosition()});
}

void ZoomableImage::wheelEvent(QWheelEvent* event)
{
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        zoomBy(std::pow(wheelStep, event->angleDelta().y()), event->position());
        event->accept();
    } else {
        QAbstractScrollArea::wheelEvent(event);
    }
}

bool ZoomableImage::zoomByKey(const QKeyEvent& event, bool isForReal)
{
    if (event.modifiers() & ~(Qt::ControlModifier | Qt::ShiftModifier | Qt::KeypadModifier))
        return false;
    switch (event.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        if (isForReal)
            zoomIn();
        return true;
    case Qt::Key_Minus:
        if (isForReal)
            zoomOut();
        return true;
    case Qt::Key_0:
        if (isForReal)
            magnifyToFit();
        return true;
    case Qt::Key_1:
        if (isForReal)
            setMagnification(1.0, middle());
        return true;
    default:
        return false;
    }
}

void ZoomableImage::copy() const
{
    QApplication::clipboard()->setImage(m_image.levelFor(1));
}

void ZoomableImage::contextMenuEvent(QContextMenuEvent* event)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(u"Kopiera"_s, this, &ZoomableImage::copy);
    menu->popup(event->globalPos());
}

void ZoomableImage::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        copy();
    else if (!zoomByKey(*event, true))
        QAbstractScrollArea::keyPressEvent(event);
}

bool ZoomableImage::event(QEvent* event)
{
    // The window's own zoom keys are meant for what has the focus.
    if (event->type() == QEvent::ShortcutOverride && zoomByKey(*static_cast<QKeyEvent*>(event), false)) {
        event->accept();
        return true;
    }
    return QAbstractScrollArea::event(event);
}

bool ZoomableImage::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::NativeGesture && nativeGesture(*static_cast<QNativeGestureEvent*>(event)))
        return true;
    if (event->type() == QEvent::Gesture && gesture(*static_cast<QGestureEvent*>(event)))
        return true;
    return QAbstractScrollArea::viewportEvent(event);
}

bool ZoomableImage::nativeGesture(const QNativeGestureEvent& event)
{
    if (event.gestureType() != Qt::ZoomNativeGesture)
        return false;
    zoomBy(1.0 + event.value(), event.position());
    return true;
}

bool ZoomableImage::gesture(QGestureEvent& event)
{
    auto* pinch = static_cast<QPinchGesture*>(event.gesture(Qt::PinchGesture));
    if (!pinch)
        return false;
    zoomBy(pinch->scaleFactor(), viewport()->mapFromGlobal(pinch->hotSpot()));
    event.accept(pinch);
    return true;
}

void ZoomableImage::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_dragged = event->position();
    updateCursor();
}

void ZoomableImage::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_dragged)
        return;
    const QPoint way = (event->position() - *m_dragged).toPoint();
    m_dragged = event->position();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - way.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - way.y());
}

void ZoomableImage::mouseReleaseEvent(QMouseEvent*)
{
    m_dragged.reset();
    updateCursor();
}

void ZoomableImage::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (m_isFitted)
        setMagnification(1.0, event->position());
    else
        magnifyToFit();
}

} // namespace wendlore
