#pragma once

#include <cstddef>
#include <string_view>

namespace wendlore {

/// Where the line around the byte at `place` of a UTF-8 text begins. Lines end at U+000A to U+000D, U+0085,
/// U+2028, U+2029.
[[nodiscard]] std::size_t lineStart(std::string_view text, std::size_t place);
/// Where that line ends, before its line end; the text's size for the last line.
[[nodiscard]] std::size_t lineEnd(std::string_view text, std::size_t place);
/// Where the line after the one that ends at `end` begins; behind the text when there is none.
[[nodiscard]] std::size_t nextLine(std::string_view text, std::size_t end);

/// A line as a result shows it: without blanks at its ends, its first 120 user-perceived characters.
[[nodiscard]] std::string_view snippetOf(std::string_view line);

} // namespace wendlore
