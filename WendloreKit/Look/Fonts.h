#pragma once

#include "Look/Metrics.h"

#include <QFont>

namespace wendlore {

/// The font of the interface: the desktop's own, Inter where the desktop names none.
[[nodiscard]] QFont interfaceFont();

/// `font` at `pixels`, in `weight`.
[[nodiscard]] inline QFont sized(QFont font, int pixels, QFont::Weight weight = QFont::Normal)
{
    font.setPixelSize(pixels);
    font.setWeight(weight);
    return font;
}

} // namespace wendlore
