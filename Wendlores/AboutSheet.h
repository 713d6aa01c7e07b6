#pragma once

#include "Look/Sheet.h"

namespace wendlore {

/// Says which program this is, and which version.
class AboutSheet final : public Sheet
{
    Q_OBJECT

public:
    explicit AboutSheet(QWidget* parent);
};

} // namespace wendlore
