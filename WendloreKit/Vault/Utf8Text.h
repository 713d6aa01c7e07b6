#pragma once

#include <string_view>

namespace wendlore {

/// True when `text` is well-formed UTF-8 throughout: no overlong forms, no surrogates, nothing beyond
/// U+10FFFF.
[[nodiscard]] bool isUtf8(std::string_view text);

} // namespace wendlore
