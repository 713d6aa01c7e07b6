#include "Vault/NeedleWindow.h"

#include <unicode/uniset.h>
#include <unicode/usetiter.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace wendlore {

namespace {

using Units = std::vector<icu::UnicodeString>;
using Spellings = std::vector<std::string>;

/// Longer than this, a window is hardly rarer.
constexpr std::size_t maximumWindowUnits = 8;

std::string utf8(const icu::UnicodeString& text)
{
    std::string bytes;
    text.toUTF8String(bytes);
    return bytes;
}

/// Cuts a caseless form before every character that is no combining mark.
Units splitIntoUnits(const icu::UnicodeString& form)
{
    Units units;
    for (int32_t start = 0; start < form.length();) {
        int32_t end = form.moveIndex32(start, 1);
        while (end < form.length() && isCombiningMark(form.char32At(end)))
            end = form.moveIndex32(end, 1);
        units.emplace_back(form, start, end - start);
        start = end;
    }
    return units;
}

/// A character whose caseless form has several units: the sharp s, ligatures.
struct Expander final
{
    Units units;
    std::string bytes;
};

/// Every character that is not its own caseless form, by that form. Hangul syllables are left out: their
/// parts count as units of their own, for which no window is chosen.
struct InverseForms final
{
    std::map<icu::UnicodeString, Spellings> byForm;
    std::vector<Expander> expanders;

    explicit InverseForms(FoldingRule rule)
    {
        UErrorCode status = U_ZERO_ERROR;
        const icu::UnicodeSet changing(u"[[[:CWCF:][:NFD_QC=N:]]-[\\uAC00-\\uD7A3]]", status);
        for (icu::UnicodeSetIterator each(changing); each.next();) {
            if (each.isString())
                continue;
            const icu::UnicodeString character(each.getCodepoint());
            const icu::UnicodeString form = caselessForm(character, rule);
            if (form == character)
                continue;
            Units units = splitIntoUnits(form);
            if (units.size() > 1)
                expanders.push_back({std::move(units), utf8(character)});
            else
                byForm[form].push_back(utf8(character));
        }
        if (rule == FoldingRule::turkic)
            byForm[u"i"].push_back("I\xCC\x87");
    }

    [[nodiscard]] static const InverseForms& of(FoldingRule rule)
    {
        static const InverseForms standard(FoldingRule::standard);
        static const InverseForms turkic(FoldingRule::turkic);
        return rule == FoldingRule::turkic ? turkic : standard;
    }

    /// `form` itself and every single character with that caseless form.
    [[nodiscard]] Spellings singles(const icu::UnicodeString& form) const
    {
        Spellings spellings{utf8(form)};
        if (const auto found = byForm.find(form); found != byForm.end())
            spellings.insert(spellings.end(), found->second.begin(), found->second.end());
        return spellings;
    }
};

bool isHangulJamo(UChar32 codePoint)
{
    return codePoint >= 0x1100 && codePoint <= 0x11FF;
}

/// Every way to write one unit, or nothing when there are too many to list (several marks can stand in any
/// order).
Spellings spellingsOfUnit(const icu::UnicodeString& unit, const InverseForms& inverse)
{
    const UChar32 base = unit.char32At(0);
    const int32_t marksAt = unit.moveIndex32(0, 1);
    const int32_t marks = unit.countChar32() - 1;
    if (marks > 1 || isCombiningMark(base) || isHangulJamo(base))
        return {};
    const Spellings bases = inverse.singles(icu::UnicodeString(base));
    if (marks == 0)
        return bases;
    Spellings spellings;
    for (const std::string& written : bases) {
        for (const std::string& mark : inverse.singles(unit.tempSubString(marksAt)))
            spellings.push_back(written + mark);
    }
    if (const auto composed = inverse.byForm.find(unit); composed != inverse.byForm.end())
        spellings.insert(spellings.end(), composed->second.begin(), composed->second.end());
    return spellings;
}

/// True when the units from `start` on are what `expander` and marks behind it stand for.
bool standsAt(const Expander& expander, const Units& units, std::size_t start)
{
    const std::size_t last = expander.units.size() - 1;
    for (std::size_t i = 0; i < last; ++i) {
        if (units[start + i] != expander.units[i])
            return false;
    }
    return units[start + last].startsWith(expander.units[last]);
}

/// Expanders that can cover a part of the window [from, to) inside an occurrence of the query.
Spellings expandersOver(const Units& units, std::size_t from, std::size_t to, const InverseForms& inverse)
{
    Spellings spellings;
    for (const Expander& expander : inverse.expanders) {
        const std::size_t length = expander.units.size();
        for (std::size_t start = 0; start + length <= units.size() && start < to; ++start) {
            if (start + length > from && standsAt(expander, units, start))
                spellings.push_back(expander.bytes);
        }
    }
    return spellings;
}

/// Bytes with some of their bits not cared about.
struct MaskedSpelling final
{
    std::string bytes;
    std::string mask;
};
using MaskedSpellings = std::vector<MaskedSpelling>;

/// Merges `right` into `left` when they differ only in the case bit of one byte.
bool mergeCase(MaskedSpelling& left, const MaskedSpelling& right)
{
    if (left.bytes.size() != right.bytes.size() || left.mask != right.mask)
        return false;
    const auto [one, two] = std::mismatch(left.bytes.begin(), left.bytes.end(), right.bytes.begin());
    if (one == left.bytes.end() || (*one ^ *two) != 0x20 || !std::equal(one + 1, left.bytes.end(), two + 1))
        return false;
    *one = static_cast<char>(*one | 0x20);
    left.mask[static_cast<std::size_t>(one - left.bytes.begin())] = 0x20;
    return true;
}

MaskedSpellings mergeCases(const Spellings& spellings)
{
    MaskedSpellings merged;
    for (const std::string& spelling : spellings)
        merged.push_back({spelling, std::string(spelling.size(), '\0')});
    for (bool changed = true; changed;) {
        changed = false;
        for (std::size_t i = 0; i < merged.size(); ++i) {
            for (std::size_t j = i + 1; j < merged.size();) {
                const bool isMerged = mergeCase(merged[i], merged[j]);
                changed |= isMerged;
                if (isMerged)
                    merged.erase(merged.begin() + static_cast<long>(j));
                else
                    ++j;
            }
        }
    }
    return merged;
}

/// Roughly how often a byte stands in notes of Swedish and English prose, as a share of all bytes. Only the
/// order matters much.
double frequency(std::uint8_t byte)
{
    constexpr std::string_view commonFirst =
        " eatnrsidlomgkvhufpcb.y,-\njw\xC3x\xA4*zq[]\xB6\xA5#`()0123456789:/'|";
    static const auto table = [&] {
        std::array<double, 256> shares;
        shares.fill(0.0004);
        double share = 0.14;
        for (const char common : commonFirst) {
            shares[static_cast<std::uint8_t>(common)] = share;
            share = std::max(share * 0.91, 0.0006);
        }
        for (int letter = 'A'; letter <= 'Z'; ++letter)
            shares[static_cast<std::size_t>(letter)] = shares[static_cast<std::size_t>(letter | 0x20)] * 0.06;
        return shares;
    }();
    return table[byte];
}

double frequency(const MaskedSpelling& spelling, std::size_t at)
{
    const auto byte = static_cast<std::uint8_t>(spelling.bytes[at]);
    return frequency(byte) + (spelling.mask[at] != 0 ? frequency(byte & 0xDF) : 0);
}

struct Candidate final
{
    BytePattern pattern;
    double probability = 1;
};

/// The two bytes of a spelling that are rarest together.
Candidate rarestProbes(const MaskedSpelling& spelling)
{
    const std::size_t length = std::min(spelling.bytes.size(), ByteScanner::maximumOffset);
    const auto probe = [&](std::size_t at) {
        return BytePattern::Probe{static_cast<std::uint8_t>(at),
                                  static_cast<std::uint8_t>(spelling.bytes[at]),
                                  static_cast<std::uint8_t>(spelling.mask[at])};
    };
    Candidate best;
    best.probability = 2;
    for (std::size_t i = 0; i < length; ++i) {
        bool isSameCharacter = true;
        for (std::size_t j = i; j < length; ++j) {
            if (j > i)
                isSameCharacter =
                    isSameCharacter && (static_cast<std::uint8_t>(spelling.bytes[j]) & 0xC0) == 0x80;
            const double one = frequency(spelling, i);
            const double two = frequency(spelling, j);
            const double probability = isSameCharacter ? std::min(one, two) : one * two * 1.5;
            if (probability < best.probability)
                best = {{probe(i), probe(j)}, probability};
        }
    }
    best.pattern.setBeginning(spelling.bytes, spelling.mask);
    return best;
}

/// Every spelling of the units [from, to) together; nothing when a unit cannot be listed or there are too
/// many.
std::optional<MaskedSpellings> spellingsOfWindow(const std::vector<MaskedSpellings>& units, std::size_t from,
                                                 std::size_t to)
{
    MaskedSpellings all{{}};
    for (std::size_t unit = from; unit < to; ++unit) {
        if (units[unit].empty() || all.size() * units[unit].size() > ByteScanner::maximumPatterns)
            return std::nullopt;
        MaskedSpellings longer;
        for (const MaskedSpelling& prefix : all) {
            for (const MaskedSpelling& spelling : units[unit])
                longer.push_back({prefix.bytes + spelling.bytes, prefix.mask + spelling.mask});
        }
        all = std::move(longer);
    }
    return all;
}

} // namespace

NeedleWindow NeedleWindow::choose(const icu::UnicodeString& form, FoldingRule rule)
{
    const InverseForms& inverse = InverseForms::of(rule);
    const Units units = splitIntoUnits(form);
    std::vector<MaskedSpellings> spellings;
    for (const icu::UnicodeString& unit : units)
        spellings.push_back(mergeCases(spellingsOfUnit(unit, inverse)));

    NeedleWindow best;
    double lowestCost = HUGE_VAL;
    for (std::size_t from = 0; from < units.size(); ++from) {
        for (std::size_t to = from + 1; to <= std::min(units.size(), from + maximumWindowUnits); ++to) {
            auto window = spellingsOfWindow(spellings, from, to);
            if (!window)
                continue;
            const MaskedSpellings expanders = mergeCases(expandersOver(units, from, to, inverse));
            window->insert(window->end(), expanders.begin(), expanders.end());
            if (window->size() > ByteScanner::maximumPatterns)
                continue;
            // Each pattern costs a compare on every byte, each candidate a closer look.
            double cost = 0.03 * static_cast<double>(window->size());
            std::vector<BytePattern> patterns;
            for (const MaskedSpelling& spelling : *window) {
                const Candidate candidate = rarestProbes(spelling);
                patterns.push_back(candidate.pattern);
                cost += 25 * candidate.probability;
            }
            if (cost < lowestCost) {
                lowestCost = cost;
                best = {std::move(patterns), static_cast<int>(from)};
            }
        }
    }
    return best;
}

} // namespace wendlore
