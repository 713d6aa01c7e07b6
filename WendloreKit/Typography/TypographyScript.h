#pragma once

#include <QString>

namespace wendlore {

struct TypographyTheme;

/// The script that sets the editor page's typography properties to `theme`.
[[nodiscard]] QString typographyScript(const TypographyTheme& theme);
/// The script that sets the editor page's zoom.
[[nodiscard]] QString zoomScript(double zoom);
/// The shortest decimal text that reads back as `value`, always with a fractional part ("12.0", "1.15").
[[nodiscard]] QString decimalText(double value);

} // namespace wendlore
