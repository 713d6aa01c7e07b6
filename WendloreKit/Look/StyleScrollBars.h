#pragma once

#include <QRect>
#include <QStyle>

class QColor;
class QPainter;
class QStyleOptionSlider;

namespace wendlore {

inline constexpr int scrollBarExtent = 12;

/// Draws a quiet scroll bar: a rounded handle without track or arrows, clearer while it is pointed at.
void drawScrollBar(QPainter& painter, const QStyleOptionSlider& bar, const QColor& ground,
                   const QRect& handle);
/// Where a part of the bar lies; it has a handle and the room on both sides of it, no arrows.
[[nodiscard]] QRect scrollBarPart(const QStyleOptionSlider& bar, QStyle::SubControl part);

} // namespace wendlore
