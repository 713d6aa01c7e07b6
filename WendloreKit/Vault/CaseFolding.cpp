#include "Vault/CaseFolding.h"

#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>

#include <cstdlib>
#include <memory>
#include <vector>

namespace wendlore {

namespace {

const icu::Normalizer2& decomposition()
{
    UErrorCode status = U_ZERO_ERROR;
    static const icu::Normalizer2* const normalizer = icu::Normalizer2::getNFDInstance(status);
    return *normalizer;
}

/// A break iterator over user-perceived characters, one a thread, because making one costs more than using
/// it.
icu::BreakIterator& characterBreaks()
{
    thread_local const std::unique_ptr<icu::BreakIterator> iterator = [] {
        UErrorCode status = U_ZERO_ERROR;
        return std::unique_ptr<icu::BreakIterator>(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    }();
    return *iterator;
}

} // namespace

FoldingRule foldingRule(std::string_view locale)
{
    return locale.starts_with("tr") || locale.starts_with("az") ? FoldingRule::turkic : FoldingRule::standard;
}

FoldingRule userFoldingRule()
{
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        if (const char* value = std::getenv(name); value && *value)
            return foldingRule(value);
    }
    return FoldingRule::standard;
}

icu::UnicodeString caselessForm(const icu::UnicodeString& text, FoldingRule rule)
{
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString form = decomposition().normalize(text, status);
    if (rule == FoldingRule::turkic) {
        // The dotted capital I is one letter there; decomposed it would fold to a dotless i with a dot.
        form.findAndReplace(icu::UnicodeString(u"I\u0307"), icu::UnicodeString(u"i"));
        form.foldCase(U_FOLD_CASE_EXCLUDE_SPECIAL_I);
    } else {
        form.foldCase(U_FOLD_CASE_DEFAULT);
    }
    return decomposition().normalize(form, status);
}

bool containsCaseless(const icu::UnicodeString& text, const icu::UnicodeString& needle, FoldingRule rule)
{
    icu::BreakIterator& breaks = characterBreaks();
    breaks.setText(text);
    icu::UnicodeString form;
    std::vector<bool> isBoundary{true};
    for (int32_t start = breaks.first(), end = breaks.next(); end != icu::BreakIterator::DONE;
         start = end, end = breaks.next()) {
        form += caselessForm(text.tempSubStringBetween(start, end), rule);
        isBoundary.resize(static_cast<size_t>(form.length()) + 1, false);
        isBoundary.back() = true;
    }
    for (int32_t at = form.indexOf(needle, 0); at >= 0; at = form.indexOf(needle, at + 1)) {
        if (isBoundary[static_cast<size_t>(at)] && isBoundary[static_cast<size_t>(at + needle.length())])
            return true;
    }
    return false;
}

bool isCombiningMark(UChar32 codePoint)
{
    return codePoint >= 0x300 && (u_getCombiningClass(codePoint) != 0 ||
                                  (U_GET_GC_MASK(codePoint) & (U_GC_MN_MASK | U_GC_ME_MASK)) != 0);
}

} // namespace wendlore
