#include "Vault/LatinOrder.h"

#include <unicode/coleitr.h>
#include <unicode/normalizer2.h>
#include <unicode/ucol.h>
#include <unicode/usetiter.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace wendlore {

namespace {

constexpr char32_t latinEnd = 0x100;
constexpr char separator = 1; // smaller than every weight
constexpr std::uint8_t firstWeight = 2;
constexpr std::size_t longestNumber = 200; // the collator takes longer ones in parts
constexpr std::uint8_t markByte = 0xCC;    // the first of a mark's two

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

std::size_t endOfNumber(std::string_view name, std::size_t place)
{
    while (place < name.size() && isDigit(name[place]))
        ++place;
    return place;
}

using CollatorPointer = std::unique_ptr<icu::RuleBasedCollator>;

/// The collator with single digits instead of numbers, at `strength`.
CollatorPointer digitwise(const icu::RuleBasedCollator& collator, icu::Collator::ECollationStrength strength)
{
    UErrorCode status = U_ZERO_ERROR;
    CollatorPointer copy(collator.clone());
    copy->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_OFF, status);
    copy->setStrength(strength);
    return copy;
}

/// True when names can be compared letter by letter first and accent by accent from the left then.
bool comparesFromTheLeft(const icu::RuleBasedCollator& collator)
{
    UErrorCode status = U_ZERO_ERROR;
    return collator.getAttribute(UCOL_FRENCH_COLLATION, status) == UCOL_OFF &&
           collator.getAttribute(UCOL_CASE_LEVEL, status) == UCOL_OFF &&
           collator.getAttribute(UCOL_ALTERNATE_HANDLING, status) == UCOL_NON_IGNORABLE && U_SUCCESS(status);
}

/// True for a character that counts as one letter, with or without accents behind it.
bool isOneLetter(const icu::RuleBasedCollator& collator, char32_t character, int32_t plainAccent)
{
    using Elements = icu::CollationElementIterator;
    constexpr int32_t continuation = 0xC0;
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<Elements> elements(
        collator.createCollationElementIterator(icu::UnicodeString(static_cast<UChar32>(character))));
    const int32_t first = elements->next(status);
    if (first == Elements::NULLORDER || Elements::primaryOrder(first) == 0 ||
        Elements::secondaryOrder(first) != plainAccent)
        return false;
    for (int32_t next = elements->next(status); next != Elements::NULLORDER; next = elements->next(status)) {
        const bool isAccent =
            Elements::primaryOrder(next) == 0 && Elements::secondaryOrder(next) > plainAccent;
        if (!isAccent && (next & continuation) != continuation)
            return false;
    }
    return U_SUCCESS(status);
}

int32_t accentOfPlainLetter(const icu::RuleBasedCollator& collator)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::CollationElementIterator> elements(
        collator.createCollationElementIterator(icu::UnicodeString(u'a')));
    return icu::CollationElementIterator::secondaryOrder(elements->next(status));
}

int compare(const icu::Collator& collator, char32_t left, char32_t right)
{
    UErrorCode status = U_ZERO_ERROR;
    return collator.compare(icu::UnicodeString(static_cast<UChar32>(left)),
                            icu::UnicodeString(static_cast<UChar32>(right)), status);
}

} // namespace

LatinOrder::LatinOrder(const icu::RuleBasedCollator& collator)
{
    if (!comparesFromTheLeft(collator))
        return;
    learnWeights(collator);
    dropContractions(collator);
    dropCharactersAmongDigits();
    learnCompositions();
    for (std::size_t character = 0; character < m_composed.size(); ++character) {
        if (!isDigit(static_cast<char>(character)) && m_weights[character].accent == 1)
            m_plainLetters[character] = m_weights[character].letter;
    }
}

void LatinOrder::learnWeights(const icu::RuleBasedCollator& collator)
{
    const CollatorPointer letters = digitwise(collator, icu::Collator::PRIMARY);
    const CollatorPointer accents = digitwise(collator, icu::Collator::SECONDARY);
    const int32_t plainAccent = accentOfPlainLetter(*accents);
    std::vector<char32_t> characters;
    for (char32_t character = 0x20; character < latinEnd; ++character) {
        const bool isControl = character >= 0x7F && character < 0xA0;
        if (!isControl && isOneLetter(*accents, character, plainAccent))
            characters.push_back(character);
    }
    std::ranges::sort(characters,
                      [&](char32_t left, char32_t right) { return compare(*accents, left, right) < 0; });
    Weight weight{firstWeight, 1};
    for (std::size_t i = 0; i < characters.size(); ++i) {
        if (i > 0 && compare(*letters, characters[i - 1], characters[i]) != 0)
            weight = {static_cast<std::uint8_t>(weight.letter + 1), 1};
        else if (i > 0 && compare(*accents, characters[i - 1], characters[i]) != 0)
            ++weight.accent;
        m_weights[characters[i]] = weight;
    }
}

void LatinOrder::dropContractions(const icu::RuleBasedCollator& collator)
{
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeSet contractions;
    ucol_getContractionsAndExpansions(collator.toUCollator(), contractions.toUSet(), nullptr, true, &status);
    icu::UnicodeSetIterator contraction(contractions);
    while (contraction.next()) {
        // One that needs a character from elsewhere cannot come up.
        const icu::UnicodeString& text = contraction.getString();
        const std::u16string_view units(text.getBuffer(), static_cast<std::size_t>(text.length()));
        if (std::ranges::all_of(units, [](char16_t unit) { return unit < latinEnd; }))
            m_weights[units.back()] = {};
    }
}

void LatinOrder::dropCharactersAmongDigits()
{
    // A number takes the place of all digits, so nothing else may stand there.
    const std::uint8_t zero = m_weights['0'].letter;
    const std::uint8_t nine = m_weights['9'].letter;
    for (std::size_t character = 0; character < m_weights.size(); ++character) {
        if (!isDigit(static_cast<char>(character)) && m_weights[character].letter >= zero &&
            m_weights[character].letter <= nine)
            m_weights[character] = {};
    }
}

void LatinOrder::learnCompositions()
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* composer = icu::Normalizer2::getNFCInstance(status);
    for (char32_t letter = 'A'; letter <= 'z' && U_SUCCESS(status); ++letter) {
        for (std::size_t mark = 0; mark < markCount; ++mark) {
            const UChar32 composed =
                composer->composePair(static_cast<UChar32>(letter), static_cast<UChar32>(firstMark + mark));
            if (composed >= 0 && composed < static_cast<UChar32>(latinEnd))
                m_composed[letter][mark] = static_cast<std::uint8_t>(composed);
        }
    }
}

/// The character at `place`, which moves behind it; `latinEnd` for everything beyond Latin-1.
[[gnu::always_inline]] inline char32_t LatinOrder::nextCharacter(std::string_view name,
                                                                 std::size_t& place) const
{
    const auto byteAt = [name](std::size_t at) {
        return at < name.size() ? static_cast<std::uint8_t>(name[at]) : std::uint8_t(0);
    };
    const std::uint8_t first = byteAt(place++);
    if (first < 0x80 && byteAt(place) != markByte)
        return first;
    const bool hasSecond = (byteAt(place) & 0xC0) == 0x80;
    if (first >= 0x80) {
        if ((first != 0xC2 && first != 0xC3) || !hasSecond)
            return latinEnd;
        return static_cast<char32_t>((first & 0x03) << 6 | (byteAt(place++) & 0x3F));
    }
    if ((byteAt(place + 1) & 0xC0) != 0x80)
        return first;
    const std::size_t mark = byteAt(place + 1) & 0x3F;
    if (mark >= markCount || m_composed[first][mark] == 0)
        return latinEnd;
    place += 2;
    return m_composed[first][mark];
}

/// Writes a number so that it compares by its value: how many digits it has, and then these. Gives the end of
/// what it wrote, or nothing when the number is too long.
char* LatinOrder::writeNumber(std::string_view name, std::size_t& place, char* key) const
{
    const std::size_t end = endOfNumber(name, place);
    while (name[place] == '0' && place + 1 < end)
        ++place;
    const std::size_t size = end - place;
    if (size > longestNumber)
        return nullptr;
    *key++ = static_cast<char>(m_weights['0'].letter);
    *key++ = static_cast<char>(size);
    key += name.copy(key, size, place);
    place = end;
    return key;
}

/// Writes an accent for every letter and number; only for names whose letters have been written.
char* LatinOrder::writeAccents(std::string_view name, char* key) const
{
    for (std::size_t place = 0; place < name.size();) {
        if (isDigit(name[place])) {
            *key++ = static_cast<char>(m_weights['0'].accent);
            place = endOfNumber(name, place);
        } else {
            *key++ = static_cast<char>(m_weights[nextCharacter(name, place)].accent);
        }
    }
    return key;
}

bool LatinOrder::isMarkOfPlainLetter(std::string_view name, std::size_t place) const
{
    return place > 0 && m_plainLetters[static_cast<std::uint8_t>(name[place - 1])] != 0 &&
           place + 1 < name.size() && (static_cast<std::uint8_t>(name[place + 1]) & 0xC0) == 0x80;
}

char* LatinOrder::writeKey(std::string_view name, char* key) const
{
    bool hasAccents = false;
    for (std::size_t place = 0; place < name.size();) {
        const auto byte = static_cast<std::uint8_t>(name[place]);
        if (const std::uint8_t letter = m_plainLetters[byte]; letter != 0) {
            *key++ = static_cast<char>(letter);
            ++place;
            continue;
        }
        if (isDigit(name[place])) {
            key = writeNumber(name, place, key);
            if (key == nullptr)
                return nullptr;
            continue;
        }
        if (byte == markByte) {
            if (!isMarkOfPlainLetter(name, place))
                return nullptr;
            --place; // the letter is another one with its mark
            --key;
        }
        const char32_t character = nextCharacter(name, place);
        const Weight weight = character < latinEnd ? m_weights[character] : Weight{};
        if (weight.letter == 0)
            return nullptr;
        *key++ = static_cast<char>(weight.letter);
        hasAccents |= weight.accent > 1;
    }
    *key++ = separator;
    return hasAccents ? writeAccents(name, key) : key;
}

} // namespace wendlore
