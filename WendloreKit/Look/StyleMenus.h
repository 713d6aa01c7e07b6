#pragma once

#include <QSize>

class QPainter;
class QStyleOptionMenuItem;

namespace wendlore {

inline constexpr int menuMargin = 5;
/// The property of an action whose menu entry stands in the destructive colour.
inline constexpr const char* destructiveProperty = "wendloreIsDestructive";

enum class EntryTone { ordinary, destructive };

/// Draws one entry of a menu: icon or tick, text, shortcut, arrow of a submenu; or a divider.
void drawMenuItem(QPainter& painter, const QStyleOptionMenuItem& item, EntryTone tone = EntryTone::ordinary);
void drawMenuBarItem(QPainter& painter, const QStyleOptionMenuItem& item);
[[nodiscard]] QSize menuItemSize(const QStyleOptionMenuItem& item, const QSize& contents);
/// How wide a menu is whose widest text has that width, with a column for the tick of the chosen entry.
[[nodiscard]] int menuWidth(int textWidth);
[[nodiscard]] QSize menuBarItemSize(const QSize& contents);

} // namespace wendlore
