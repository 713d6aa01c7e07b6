#pragma once

#include <QColor>
#include <QRectF>

class QPainter;
class QWidget;

namespace wendlore {

/// Fills `area` with rounded corners.
void fillRounded(QPainter& painter, const QRectF& area, const QColor& color, qreal radius);
/// Draws a line of `width` just inside `area`, with rounded corners.
void strokeRounded(QPainter& painter, const QRectF& area, const QColor& color, qreal width, qreal radius);
/// The ground of what floats over other views: paper with rounded corners and a line around it.
void drawFloatingGround(QWidget& widget);
/// The ring around what has the keyboard focus, just inside `area`.
void drawFocusRing(QPainter& painter, const QRectF& area, const QColor& accent);

} // namespace wendlore
