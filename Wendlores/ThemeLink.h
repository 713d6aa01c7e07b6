#pragma once

#include "Typography/TypographyTheme.h"

#include <QUrl>

#include <optional>

namespace wendlore {

/// Whether a link is of the program's own scheme, "wendlore".
[[nodiscard]] bool isOwnLink(const QUrl& link);

/// The theme that a link "wendlore://apply-theme?data=JSON" carries; nothing for any other link, and for one
/// whose data is no theme.
[[nodiscard]] std::optional<TypographyTheme> themeOfLink(const QUrl& link);

} // namespace wendlore
