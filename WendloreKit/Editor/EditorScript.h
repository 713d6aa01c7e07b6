#pragma once

#include <QByteArray>
#include <QString>

namespace wendlore {

/// `text` as a JSON string literal with its quotes, "/" written as "\/", safe inside any script.
[[nodiscard]] QString jsString(const QString& text);

/// `script`, whose other letters all stand in literals, with those written as escapes. Nothing is lost, not
/// even half a surrogate pair.
[[nodiscard]] QByteArray asciiScript(const QString& script);

} // namespace wendlore
