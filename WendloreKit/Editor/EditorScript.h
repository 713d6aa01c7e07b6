#pragma once

#include <QString>

namespace wendlore {

/// `text` as a JSON string literal with its quotes, "/" written as "\/", safe inside any script.
[[nodiscard]] QString jsString(const QString& text);

} // namespace wendlore
