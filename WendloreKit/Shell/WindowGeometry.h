#pragma once

#include <QRect>

#include <optional>

class QJsonObject;
class QWidget;

namespace wendlore {

/// Where a window was left: the place of its frame, the size of what is inside, and whether it filled the
/// screen. (The toolkit's own record guesses the frame and moves a window that has none at every start.)
struct WindowGeometry final
{
    QRect normal;
    bool isMaximized = false;

    [[nodiscard]] static WindowGeometry of(const QWidget& window);
    /// Nothing for anything but what `toJson` made.
    [[nodiscard]] static std::optional<WindowGeometry> fromJson(const QJsonObject& json);
    [[nodiscard]] QJsonObject toJson() const;

    /// The size for a window that never was anywhere: `wanted`, as far as its screen has room for it and a
    /// frame.
    [[nodiscard]] static QSize firstSize(const QWidget& window, const QSize& wanted);
    /// Puts a window that is not shown yet there; one that would lie outside every screen only gets its size,
    /// and one that is larger than its screen gets that of the screen.
    void applyTo(QWidget& window) const;

    friend bool operator==(const WindowGeometry&, const WindowGeometry&) = default;
};

} // namespace wendlore
