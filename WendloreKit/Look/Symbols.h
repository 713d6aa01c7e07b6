#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QString>

class QPainter;
class QRectF;

namespace wendlore {

/// The drawing of the symbol `name` in `color`, `size` wide and high, sharp at `pixelRatio`. Symbols are
/// named as in the design ("square.and.pencil"). Empty for a name that has no drawing.
[[nodiscard]] QPixmap symbolPixmap(const QString& name, const QColor& color, int size, qreal pixelRatio);

/// Draws the symbol in the middle of `area`, on whole device pixels.
void drawSymbol(QPainter& painter, const QRectF& area, const QString& name, const QColor& color, int size);

/// The symbol as an icon for menus and actions, where the style gives it its colour.
[[nodiscard]] QIcon symbolIcon(const QString& name);

} // namespace wendlore
