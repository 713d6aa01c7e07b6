#pragma once

#include "Decoder/QuickLookLimits.h"

#include <QStringList>

namespace wendlore {

/// Has the office program write `documents` in `format` into `folder`, which becomes its home and holds its
/// settings too. Nothing else can it change, and of what is anybody's it reads nothing else, so documents
/// have to lie there. False when it fails or its time is over; nothing of it runs on then. Blocks.
[[nodiscard]] bool runOfficeProgram(const QString& program, const QString& folder,
                                    const QStringList& documents, const QString& format,
                                    const QuickLookLimits& limits);

} // namespace wendlore
