#include "Shell/Windows.h"

#include <QWidget>

using namespace Qt::StringLiterals;

namespace wendlore {

void bringForward(QWidget& window)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

QString windowName(const QWidget& window)
{
    return window.windowTitle().isEmpty() ? u"Wendlores"_s : window.windowTitle();
}

} // namespace wendlore
