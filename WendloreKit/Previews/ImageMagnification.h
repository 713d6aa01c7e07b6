#pragma once

#include <QPointF>
#include <QSizeF>

#include <optional>

namespace wendlore {

inline constexpr double minimumMagnification = 0.05;
inline constexpr double maximumMagnification = 20.0;

/// How large an image is drawn, and which point of the drawn image lies at the view's top left corner.
struct Magnification final
{
    double scale = 1.0;
    QPointF scroll;
};

/// Shows a whole image of the size `image` in a view of the size `view`: never larger than it is by nature,
/// never below the minimum, and its middle where it does not fit even so. Nothing for an image without
/// extent.
[[nodiscard]] std::optional<Magnification> magnifyToFit(QSizeF image, QSizeF view);

/// `before` at another scale (kept within the limits), with the same point of the image below `anchor`, a
/// point of the view.
[[nodiscard]] Magnification magnify(const Magnification& before, double scale, QPointF anchor);

} // namespace wendlore
