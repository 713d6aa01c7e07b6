#include "Look/Drawing.h"

#include "Look/Colors.h"
#include "Look/Metrics.h"

#include <QPainter>
#include <QWidget>

namespace wendlore {

namespace {

void drawRounded(QPainter& painter, const QRectF& area, const QPen& pen, const QBrush& brush, qreal radius)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(pen);
    painter.setBrush(brush);
    painter.drawRoundedRect(area, radius, radius);
    painter.restore();
}

} // namespace

void fillRounded(QPainter& painter, const QRectF& area, const QColor& color, qreal radius)
{
    drawRounded(painter, area, Qt::NoPen, color, radius);
}

void strokeRounded(QPainter& painter, const QRectF& area, const QColor& color, qreal width, qreal radius)
{
    const qreal half = width / 2;
    drawRounded(painter, area.adjusted(half, half, -half, -half), QPen(color, width), Qt::NoBrush,
                radius - half);
}

void drawFloatingGround(QWidget& widget)
{
    QPainter painter(&widget);
    painter.setRenderHint(QPainter::Antialiasing);
    const Colors& colors = Colors::of(widget.palette());
    fillRounded(painter, widget.rect(), colors.paper, metrics::radius);
    strokeRounded(painter, widget.rect(), colors.line, 1, metrics::radius);
}

void drawFocusRing(QPainter& painter, const QRectF& area, const QColor& accent)
{
    strokeRounded(painter, area, accent, metrics::focusRing, metrics::radius);
}

} // namespace wendlore
