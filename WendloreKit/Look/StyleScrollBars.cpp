#include "Look/StyleScrollBars.h"

#include "Look/Colors.h"
#include "Look/Drawing.h"

#include <QPainter>
#include <QStyleOptionSlider>

namespace wendlore {

namespace {

constexpr int shortestHandle = 32;
constexpr int handleMargin = 3;

/// The part of `whole` from `start`, `length` long, in the bar's direction.
QRect along(const QStyleOptionSlider& bar, int start, int length)
{
    const QRect& whole = bar.rect;
    return bar.orientation == Qt::Horizontal
               ? QRect(whole.left() + start, whole.top(), length, whole.height())
               : QRect(whole.left(), whole.top() + start, whole.width(), length);
}

} // namespace

void drawScrollBar(QPainter& painter, const QStyleOptionSlider& bar, const QColor& ground,
                   const QRect& handle)
{
    painter.fillRect(bar.rect, ground);
    if (bar.maximum <= bar.minimum)
        return;
    const Colors& colors = Colors::of(bar.palette);
    const bool isTouched =
        bar.state.testFlag(QStyle::State_MouseOver) || bar.state.testFlag(QStyle::State_Sunken);
    QColor color = colors.muted;
    color.setAlphaF(isTouched ? 0.6F : 0.3F);
    const QRectF area = QRectF(handle).adjusted(handleMargin, handleMargin, -handleMargin, -handleMargin);
    fillRounded(painter, area, color, std::min(area.width(), area.height()) / 2);
}

QRect scrollBarPart(const QStyleOptionSlider& bar, QStyle::SubControl part)
{
    const int length = bar.orientation == Qt::Horizontal ? bar.rect.width() : bar.rect.height();
    const qint64 range = qint64(bar.maximum) - bar.minimum;
    int handle = length;
    if (range > 0)
        handle = static_cast<int>(qint64(length) * bar.pageStep / (range + bar.pageStep));
    handle = std::min(std::max(handle, shortestHandle), length);
    const int start = QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition,
                                                      length - handle, bar.upsideDown);
    switch (part) {
    case QStyle::SC_ScrollBarSlider:
        return along(bar, start, handle);
    case QStyle::SC_ScrollBarSubPage:
        return along(bar, 0, start);
    case QStyle::SC_ScrollBarAddPage:
        return along(bar, start + handle, length - start - handle);
    case QStyle::SC_ScrollBarGroove:
        return bar.rect;
    default:
        return {};
    }
}

} // namespace wendlore
