#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace wendlore {

/// The text of a note's bytes, or nothing when they are not UTF-8. A byte order mark, NUL bytes and all line
/// endings are part of the text: `toUtf8()` gives exactly `bytes` back.
[[nodiscard]] std::optional<QString> noteText(const QByteArray& bytes);

/// How many characters a reader sees in `text` ("e" with a combining accent, an emoji with its skin tone and
/// CR LF are one each).
[[nodiscard]] qsizetype characterCount(const QString& text);

} // namespace wendlore
