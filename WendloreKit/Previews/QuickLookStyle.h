#pragma once

#include <QByteArray>

namespace wendlore {

struct Colors;

/// The style sheet of every preview that is a web page, in these colours.
[[nodiscard]] QByteArray quickLookStyle(const Colors& colors);

} // namespace wendlore
