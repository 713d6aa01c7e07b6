#pragma once

#include "Decoder/QuickLookFile.h"
#include "Decoder/QuickLookPage.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace wendlore {

/// How much of a text a preview shows, in bytes.
inline constexpr qint64 shownTextSize = 2'000'000;

/// The beginning of a text file, and how large the whole is.
struct TextBeginning final
{
    QString text;
    bool isWhole = true;
    qint64 fileSize = 0;

    /// What the user is told when there is more.
    [[nodiscard]] QString notice() const;
};

/// Up to `limit` bytes of the file as text, up to the end of a line. Nothing when the file cannot be read or
/// is no text.
[[nodiscard]] std::optional<TextBeginning> readTextBeginning(const QuickLookFile& file,
                                                             qint64 limit = shownTextSize);

/// What the bytes say: UTF-8, UTF-16 with its mark, or else the old West European encoding. Nothing when they
/// are no text.
[[nodiscard]] std::optional<QString> decodedText(const QByteArray& bytes);

/// The text as a page: highlighted in the language of `extension`.
[[nodiscard]] QuickLookPage textPage(const TextBeginning& beginning, const QString& extension);

} // namespace wendlore
