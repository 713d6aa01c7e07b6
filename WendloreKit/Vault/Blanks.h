#pragma once

#include <QString>

namespace wendlore {

/// `text` without spaces and tabs at both ends; line breaks stay.
[[nodiscard]] QString withoutOuterBlanks(const QString& text);

} // namespace wendlore
