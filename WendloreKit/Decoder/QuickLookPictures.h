#pragma once

#include "Decoder/QuickLookPage.h"

#include <QStringList>

#include <optional>

namespace wendlore {

/// Where documents of office programs, whether archives or folders, have a picture of their first page; the
/// best first.
[[nodiscard]] const QStringList& picturePlaces();

/// How large such a picture may be, in bytes.
inline constexpr qint64 largestPicture = 20'000'000;

/// Where they have their pages as they are printed.
inline constexpr QLatin1StringView pagesPlace("QuickLook/Preview.pdf");

/// The best of these pictures, which are given by their places, as a page; nothing when there is none.
[[nodiscard]] std::optional<QuickLookPage> picturePage(const QHash<QString, QByteArray>& pictures);

} // namespace wendlore
