#include "Previews/PDFKitView.h"

#include "Previews/PdfPageLinks.h"

#include "Editor/Scheduler.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGestureEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QNativeGestureEvent>
#include <QPinchGesture>
#include <QScrollBar>

#include <cmath>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// A notch of the wheel is 120.
constexpr double wheelStep = 1.0015;

} // namespace

void PDFKitView::copy() const
{
    if (!m_selectedText.isEmpty())
        QApplication::clipboard()->setText(m_selectedText);
}

bool PDFKitView::actOnKey(const QKeyEvent& event, bool isForReal)
{
    std::function<void()> act;
    if (event.matches(QKeySequence::Copy))
        act = [this] { copy(); };
    else if (event.matches(QKeySequence::SelectAll))
        act = [this] { selectAll(); };
    else if (event.key() == Qt::Key_Plus || event.key() == Qt::Key_Equal)
        act = [this] { zoomIn(); };
    else if (event.key() == Qt::Key_Minus)
        act = [this] { zoomOut(); };
    else if (event.key() == Qt::Key_0)
        act = [this] { fitWidth(); };
    else if (event.key() == Qt::Key_Home)
        act = [this] { showPage(0); };
    else if (event.key() == Qt::Key_End)
        act = [this] { verticalScrollBar()->setValue(verticalScrollBar()->maximum()); };
    else if (event.key() == Qt::Key_Space)
        act = [this, isBack = event.modifiers().testFlag(Qt::ShiftModifier)] {
            verticalScrollBar()->triggerAction(isBack ? QScrollBar::SliderPageStepSub
                                                      : QScrollBar::SliderPageStepAdd);
        };
    if (act && isForReal)
        act();
    return act != nullptr;
}

bool PDFKitView::event(QEvent* event)
{
    // The window's own keys for zoom and copying are meant for what has the focus.
    if (event->type() == QEvent::ShortcutOverride && actOnKey(*static_cast<QKeyEvent*>(event), false)) {
        event->accept();
        return true;
    }
    return QAbstractScrollArea::event(event);
}

void PDFKitView::keyPressEvent(QKeyEvent* event)
{
    if (!actOnKey(*event, true))
        QAbstractScrollArea::keyPressEvent(event);
}

bool PDFKitView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::NativeGesture) {
        const auto& gesture = *static_cast<QNativeGestureEvent*>(event);
        if (gesture.gestureType() == Qt::ZoomNativeGesture) {
            zoomBy(1.0 + gesture.value(), gesture.position());
            return true;
        }
    }
    if (event->type() == QEvent::Gesture) {
        auto& gestures = *static_cast<QGestureEvent*>(event);
        if (auto* pinch = static_cast<QPinchGesture*>(gestures.gesture(Qt::PinchGesture))) {
            zoomBy(pinch->scaleFactor(), viewport()->mapFromGlobal(pinch->hotSpot()));
            gestures.accept(pinch);
            return true;
        }
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void PDFKitView::resizeEvent(QResizeEvent*)
{
    if (m_isFitted)
        fitWidth();
    else
        layOut(m_layout.scale(), scrolled(), {});
}

void PDFKitView::scrollContentsBy(int, int)
{
    wantVisiblePages();
    viewport()->update();
    Q_EMIT placeChanged();
}

void PDFKitView::wheelEvent(QWheelEvent* event)
{
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        zoomBy(std::pow(wheelStep, event->angleDelta().y()), event->position());
        event->accept();
    } else {
        QAbstractScrollArea::wheelEvent(event);
    }
}

void PDFKitView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || m_layout.pageCount() == 0)
        return;
    m_pressed = linkAt(event->position());
    m_dragged = m_layout.pointAt(scrolled() + event->position());
    m_selecting.reset();
    m_selection.clear();
    m_selectedText.clear();
    viewport()->update();
    Q_EMIT selectionChanged();
}

void PDFKitView::mouseMoveEvent(QMouseEvent* event)
{
    if (m_dragged)
        select(*m_dragged, m_layout.pointAt(scrolled() + event->position()));
    else
        hover(event->position());
}

void PDFKitView::mouseReleaseEvent(QMouseEvent* event)
{
    m_dragged.reset();
    const auto pressed = std::exchange(m_pressed, std::nullopt);
    const auto link = linkAt(event->position());
    if (pressed && link && pressed->area == link->area && m_selectedText.isEmpty())
        follow(*link);
}

std::optional<PdfLink> PDFKitView::linkAt(QPointF position) const
{
    return m_layout.pageCount() > 0 ? m_links->at(m_layout.pointAt(scrolled() + position)) : std::nullopt;
}

void PDFKitView::hover(QPointF position)
{
    const auto link = linkAt(position);
    viewport()->setCursor(link ? Qt::PointingHandCursor : Qt::IBeamCursor);
    viewport()->setToolTip(link ? link->address.toDisplayString() : QString());
}

void PDFKitView::follow(const PdfLink& link)
{
    if (link.address.isEmpty())
        showPlace(link.target);
    else
        Q_EMIT linkClicked(link.address);
}

void PDFKitView::contextMenuEvent(QContextMenuEvent* event)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(u"Kopiera"_s, this, &PDFKitView::copy)->setEnabled(!m_selectedText.isEmpty());
    menu->addAction(u"Markera allt"_s, this, &PDFKitView::selectAll);
    menu->popup(event->globalPos());
}

} // namespace wendlore
