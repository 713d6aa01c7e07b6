#pragma once

#include "Decoder/QuickLookLimits.h"

#include <QString>

namespace wendlore {

/// Has the office program write `document` in `format` into `folder`, which becomes its home and holds its
/// settings too. False when it fails or its time is over; nothing of it runs on then. Blocks.
[[nodiscard]] bool runOfficeProgram(const QString& program, const QString& folder, const QString& document,
                                    const QString& format, const QuickLookLimits& limits);

} // namespace wendlore
