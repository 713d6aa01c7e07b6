#pragma once

#include <QString>

class QWidget;

namespace wendlore {

/// Shows a window, also one that was minimised or closed, and gives it the keyboard.
void bringForward(QWidget& window);

/// What a window is called in menus and tabs: its title, or the program's name where it has none.
[[nodiscard]] QString windowName(const QWidget& window);

} // namespace wendlore
