#pragma once

#include <unicode/unistr.h>

#include <string_view>

namespace wendlore {

/// Which letters the dotted and the dotless i belong to: Turkish and Azeri keep them apart in their own way.
enum class FoldingRule { standard, turkic };

/// The rule of a locale as the environment names it ("sv_SE.UTF-8").
[[nodiscard]] FoldingRule foldingRule(std::string_view locale);
/// The rule of the locale that the user has chosen for letters.
[[nodiscard]] FoldingRule userFoldingRule();

/// The text in the form in which texts that differ only in case or in the way accents are encoded are equal:
/// decomposed, fully case folded, decomposed again.
[[nodiscard]] icu::UnicodeString caselessForm(const icu::UnicodeString& text, FoldingRule rule);

/// True when `text` holds the caseless form `needle`, beginning and ending between user-perceived characters.
/// Exact for every text, and slow: the fast paths of search decide the common cases and leave the rest to
/// this.
[[nodiscard]] bool containsCaseless(const icu::UnicodeString& text, const icu::UnicodeString& needle,
                                    FoldingRule rule);

/// True for code points that continue the character before them: combining and enclosing marks.
[[nodiscard]] bool isCombiningMark(UChar32 codePoint);

} // namespace wendlore
