#pragma once

#include "Look/Colors.h"
#include "Look/Style.h"

#include <QWidget>

namespace wendlore {

/// Gives the test program the product's style, font and colours.
void useProductLook(ColorScheme scheme = ColorScheme::light, Motion motion = Motion::unwanted);

/// Shows `widget` at `size` and waits until it is on screen.
void showAt(QWidget& widget, QSize size);

/// The child of `parent` whose accessible name is `name`; null when there is none.
[[nodiscard]] QWidget* childNamed(const QWidget& parent, const QString& name);

/// The button of that accessible name.
template <typename Button>
[[nodiscard]] Button* buttonNamed(const QWidget& parent, const QString& name)
{
    return qobject_cast<Button*>(childNamed(parent, name));
}

/// What `widget` looks like now.
[[nodiscard]] QImage pictureOf(QWidget& widget);

} // namespace wendlore
