#include "Shell/WindowGeometry.h"

#include <QGuiApplication>
#include <QJsonObject>
#include <QScreen>
#include <QWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// How much of a window has to lie on a screen, so that it can be taken hold of.
constexpr QSize graspable(100, 40);

/// What frames add to a window, and a little more; no frame can be asked before the window is shown.
constexpr QSize frameRoom(10, 40);

bool isGraspable(const QRect& window)
{
    return std::ranges::any_of(QGuiApplication::screens(), [&window](const QScreen* screen) {
        const QRect visible = screen->availableGeometry() & window;
        return visible.width() >= graspable.width() && visible.height() >= graspable.height();
    });
}

} // namespace

WindowGeometry WindowGeometry::of(const QWidget& window)
{
    if (!window.isMaximized() && !window.isFullScreen())
        return {QRect(window.pos(), window.size()), false};
    const QPoint frame = window.geometry().topLeft() - window.pos();
    const QRect normal = window.normalGeometry();
    return {QRect(normal.topLeft() - frame, normal.size()), window.isMaximized()};
}

std::optional<WindowGeometry> WindowGeometry::fromJson(const QJsonObject& json)
{
    const QRect normal(json["x"_L1].toInt(), json["y"_L1].toInt(), json["width"_L1].toInt(),
                       json["height"_L1].toInt());
    if (normal.isEmpty())
        return std::nullopt;
    return WindowGeometry{normal, json["isMaximized"_L1].toBool()};
}

QJsonObject WindowGeometry::toJson() const
{
    return {{u"x"_s, normal.x()},
            {u"y"_s, normal.y()},
            {u"width"_s, normal.width()},
            {u"height"_s, normal.height()},
            {u"isMaximized"_s, isMaximized}};
}

QSize WindowGeometry::firstSize(const QWidget& window, const QSize& wanted)
{
    return wanted.boundedTo(window.screen()->availableSize() - frameRoom);
}

void WindowGeometry::applyTo(QWidget& window) const
{
    const QScreen* home = QGuiApplication::screenAt(normal.center());
    const QRect screen = (home ? home : window.screen())->availableGeometry();
    if (normal.width() > screen.width() || normal.height() > screen.height()) {
        window.move(screen.topLeft());
        window.resize(normal.size().boundedTo(screen.size() - frameRoom));
    } else {
        if (isGraspable(normal))
            window.move(normal.topLeft());
        window.resize(normal.size());
    }
    if (isMaximized)
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

} // namespace wendlore
