#pragma once

#include "Look/Colors.h"
#include "Look/Style.h"

#include <QObject>

namespace wendlore {

/// What the desktop wishes of every program's look.
class SystemAppearance : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    [[nodiscard]] virtual ColorScheme colorScheme() const = 0;
    [[nodiscard]] virtual Motion motion() const = 0;

Q_SIGNALS:
    void changed();
};

} // namespace wendlore
