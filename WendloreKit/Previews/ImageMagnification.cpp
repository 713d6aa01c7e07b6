#include "Previews/ImageMagnification.h"

#include <algorithm>

namespace wendlore {

std::optional<Magnification> magnifyToFit(QSizeF image, QSizeF view)
{
    if (!(image.width() > 0) || !(image.height() > 0))
        return std::nullopt;
    const double fitting = std::min(view.width() / image.width(), view.height() / image.height());
    const double scale = std::max(std::min(fitting, 1.0), minimumMagnification);
    const QSizeF left = image * scale - view;
    return Magnification{scale, {std::max(left.width() * 0.5, 0.0), std::max(left.height() * 0.5, 0.0)}};
}

Magnification magnify(const Magnification& before, double scale, QPointF anchor)
{
    const double limited = std::clamp(scale, minimumMagnification, maximumMagnification);
    const QPointF point = (before.scroll + anchor) / before.scale;
    return {limited, point * limited - anchor};
}

} // namespace wendlore
