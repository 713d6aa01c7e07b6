#pragma once

#include <QString>

namespace wendlore {

/// The colour theme that the user chose; `automatic` follows the system's appearance.
enum class AppTheme { automatic, light, dark };

/// The stored text of a theme: "auto", "light" or "dark".
[[nodiscard]] QString rawValue(AppTheme theme);
/// The theme of a stored text; `automatic` for any other text.
[[nodiscard]] AppTheme appTheme(const QString& rawValue);

} // namespace wendlore
