#include "Vault/SearchNeedle.h"

#include "Vault/NeedleWindow.h"
#include "Vault/TextLines.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <string>

namespace wendlore {

namespace {

using Byte = std::uint8_t;

/// What a character contributes to the caseless form, where that is simple enough to compare in passing.
struct Expansion final
{
    bool isPlain = false; ///< false: look at the whole line with all of Unicode's rules
    bool isMark = false;  ///< the character is a single combining mark
    char32_t base = 0;
    char32_t mark = 0; ///< 0 when there is none
};

constexpr UChar32 tableEnd = 0x530;

Expansion expansionOf(UChar32 character, FoldingRule rule)
{
    // Controls and the soft hyphen part characters; pictographs join; the grapheme joiner and double marks
    // are rare.
    const bool isOdd = (character < 0x20 && character != '\t') || (character >= 0x7F && character < 0xA0) ||
                       character == 0xA9 || character == 0xAD || character == 0xAE || character == 0x34F ||
                       (character >= 0x340 && character <= 0x345) ||
                       (character >= 0x35C && character <= 0x362) ||
                       (character >= 0x483 && character <= 0x489);
    if (isOdd || (rule == FoldingRule::turkic && character == 'I'))
        return {};
    const icu::UnicodeString form = caselessForm(icu::UnicodeString(character), rule);
    const UChar32 base = form.char32At(0);
    const int32_t next = form.moveIndex32(0, 1);
    if (isCombiningMark(base))
        return {form.length() == next, true, static_cast<char32_t>(base), 0};
    if (next == form.length())
        return {true, false, static_cast<char32_t>(base), 0};
    const UChar32 mark = form.char32At(next);
    if (form.moveIndex32(next, 1) != form.length() || !isCombiningMark(mark))
        return {};
    return {true, false, static_cast<char32_t>(base), static_cast<char32_t>(mark)};
}

class ExpansionTable final
{
public:
    explicit ExpansionTable(FoldingRule rule)
    {
        for (UChar32 character = 0; character < tableEnd; ++character)
            m_low[static_cast<std::size_t>(character)] = expansionOf(character, rule);
    }

    [[nodiscard]] Expansion at(UChar32 character) const
    {
        if (character >= 0 && character < tableEnd)
            return m_low[static_cast<std::size_t>(character)];
        const bool isPunctuation =
            (character >= 0x2010 && character <= 0x2027) || (character >= 0x2030 && character <= 0x203A);
        return isPunctuation ? Expansion{true, false, static_cast<char32_t>(character), 0} : Expansion{};
    }

    [[nodiscard]] static const ExpansionTable& of(FoldingRule rule)
    {
        static const ExpansionTable standard(FoldingRule::standard);
        static const ExpansionTable turkic(FoldingRule::turkic);
        return rule == FoldingRule::turkic ? turkic : standard;
    }

private:
    std::array<Expansion, tableEnd> m_low;
};

bool continues(char byte)
{
    return (static_cast<Byte>(byte) & 0xC0) == 0x80;
}

/// Where the character before `place` begins.
std::size_t previousCharacter(std::string_view text, std::size_t place)
{
    do
        --place;
    while (place > 0 && continues(text[place]));
    return place;
}

/// The character at `place`, which moves behind it; -1 for bytes that are no character.
UChar32 nextCharacter(std::string_view text, std::size_t& place)
{
    UChar32 character = 0;
    auto at = static_cast<int32_t>(0);
    const std::string_view rest = text.substr(place, 4);
    U8_NEXT(rest.data(), at, static_cast<int32_t>(rest.size()), character);
    place += static_cast<std::size_t>(at);
    return character;
}

/// True when the bytes of a text that holds `form` can stand in another order than the scan expects: a mark
/// that folds to an iota stands behind the other marks in the caseless form, but anywhere among them in the
/// text.
bool canBeReordered(const std::vector<char32_t>& form)
{
    for (std::size_t i = 1; i < form.size(); ++i) {
        if (form[i] == U'\u03B9' && isCombiningMark(static_cast<UChar32>(form[i - 1])))
            return true;
    }
    return false;
}

icu::UnicodeString decoded(std::string_view text)
{
    return icu::UnicodeString::fromUTF8({text.data(), static_cast<int32_t>(text.size())});
}

} // namespace

SearchNeedle::SearchNeedle(std::string_view query, FoldingRule rule, ByteScanner::Width width)
    : m_rule(rule)
    , m_form(caselessForm(decoded(query), rule))
{
    for (int32_t i = 0; i < m_form.length(); i = m_form.moveIndex32(i, 1))
        m_codePoints.push_back(static_cast<char32_t>(m_form.char32At(i)));
    const std::string form = [this] {
        std::string bytes;
        return m_form.toUTF8String(bytes);
    }();
    m_spansLines = lineEnd(form, 0) != form.size();
    m_hasControls = std::ranges::any_of(m_codePoints, [](char32_t character) { return character < 0x20; });
    // A query that begins with a mark matches only where the mark stands alone: rare enough to look at every
    // line.
    if (m_codePoints.empty() || isCombiningMark(static_cast<UChar32>(m_codePoints.front())) ||
        canBeReordered(m_codePoints))
        return;
    NeedleWindow window = NeedleWindow::choose(m_form, rule);
    m_scanner = ByteScanner(std::move(window.patterns), width);
    m_unitsBefore = window.unitsBefore;
}

SearchNeedle::Verdict SearchNeedle::verify(std::string_view text, std::size_t candidate) const
{
    if (continues(text[candidate]))
        return Verdict::differs;
    const ExpansionTable& table = ExpansionTable::of(m_rule);
    if (std::size_t place = candidate; !table.at(nextCharacter(text, place)).isPlain)
        return Verdict::unsure;
    std::size_t start = candidate;
    for (int units = 0; units < m_unitsBefore;) {
        if (start == 0)
            return Verdict::differs;
        start = previousCharacter(text, start);
        std::size_t place = start;
        const Expansion expansion = table.at(nextCharacter(text, place));
        if (!expansion.isPlain)
            return besideOddCharacter(text[start]);
        units += expansion.isMark ? 0 : 1;
    }
    if (start > 0) {
        std::size_t place = previousCharacter(text, start);
        // Few characters join what follows them; they lie beyond the table.
        if (!continues(text[place]) && static_cast<Byte>(text[place]) >= 0x80 &&
            !table.at(nextCharacter(text, place)).isPlain)
            return Verdict::unsure;
    }
    return compareFrom(text, start);
}

SearchNeedle::Verdict SearchNeedle::besideOddCharacter(char first) const
{
    // Line ends and other controls are no part of an ordinary query.
    return static_cast<Byte>(first) < 0x20 && !m_hasControls ? Verdict::differs : Verdict::unsure;
}

SearchNeedle::Verdict SearchNeedle::differAt(char32_t wanted, char32_t found)
{
    // Two marks on one letter can stand in either order.
    return isCombiningMark(static_cast<UChar32>(wanted)) && isCombiningMark(static_cast<UChar32>(found))
               ? Verdict::unsure
               : Verdict::differs;
}

SearchNeedle::Verdict SearchNeedle::compareFrom(std::string_view text, std::size_t start) const
{
    const ExpansionTable& table = ExpansionTable::of(m_rule);
    std::size_t place = start;
    bool isAfterMark = false;
    for (std::size_t matched = 0; matched < m_codePoints.size();) {
        if (place >= text.size())
            return Verdict::differs;
        const std::size_t character = place;
        const Expansion expansion = table.at(nextCharacter(text, place));
        if (!expansion.isPlain)
            return besideOddCharacter(text[character]);
        if (expansion.isMark && isAfterMark)
            return Verdict::unsure;
        for (const char32_t part : {expansion.base, expansion.mark}) {
            if (part == 0)
                continue;
            if (matched == m_codePoints.size())
                return Verdict::differs;
            if (m_codePoints[matched] != part)
                return differAt(m_codePoints[matched], part);
            ++matched;
        }
        isAfterMark = expansion.isMark || expansion.mark != 0;
    }
    if (place == text.size())
        return Verdict::matches;
    const Expansion next = table.at(nextCharacter(text, place));
    if (!next.isPlain)
        return static_cast<Byte>(text[place - 1]) < 0x80 ? Verdict::matches : Verdict::unsure;
    if (!next.isMark)
        return Verdict::matches;
    // A mark behind a tab stands alone; behind another mark it may belong to the match in another order.
    return isAfterMark || m_codePoints.back() == U'\t' ? Verdict::unsure : Verdict::differs;
}

bool SearchNeedle::lineHolds(std::string_view line) const
{
    return containsCaseless(decoded(line), m_form, m_rule);
}

std::optional<SearchNeedle::Line> SearchNeedle::firstLine(std::string_view text) const
{
    if (m_form.isEmpty())
        return std::nullopt;
    if (m_spansLines)
        return lineHolds(text) ? std::optional(Line{}) : std::nullopt;
    const std::size_t begin = text.substr(0, 3) == "\xEF\xBB\xBF" ? 3 : 0;
    const auto* const bytes = reinterpret_cast<const Byte*>(text.data());
    for (std::size_t place = begin; place < text.size();) {
        if (!m_scanner.isEmpty())
            place = m_scanner.find(bytes, text.size(), place);
        if (place >= text.size())
            break;
        const Verdict verdict =
            m_scanner.isEmpty() ? Verdict::unsure : verify(text.substr(begin), place - begin);
        if (verdict == Verdict::differs) {
            ++place;
            continue;
        }
        const Line line{std::max(lineStart(text, place), begin), lineEnd(text, place)};
        if (verdict == Verdict::matches || lineHolds(text.substr(line.start, line.end - line.start)))
            return line;
        place = nextLine(text, line.end);
    }
    return std::nullopt;
}

bool SearchNeedle::isIn(std::string_view text) const
{
    std::string padded(text);
    padded.resize(text.size() + ByteScanner::padding);
    return firstLine(std::string_view(padded).substr(0, text.size())).has_value();
}

} // namespace wendlore
