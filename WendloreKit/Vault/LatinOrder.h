#pragma once

#include <unicode/tblcoll.h>

#include <array>
#include <cstdint>
#include <string_view>

namespace wendlore {

/// Sort keys for names in Latin letters (Latin-1, composed or decomposed), in exactly the order of a collator
/// that ignores case and compares numbers by value, and several times faster than the collator's own.
class LatinOrder final
{
public:
    /// Learns the order from `collator`. Characters that the collator does not treat one by one are left to
    /// it; in languages whose order works otherwise that can be all of them.
    explicit LatinOrder(const icu::RuleBasedCollator& collator);

    /// No key of a name of `nameSize` bytes is larger: a digit alone takes three bytes, and accents follow.
    [[nodiscard]] static constexpr std::size_t largestKey(std::size_t nameSize) { return 4 * nameSize + 1; }
    /// Writes the key of `name` to `key` and gives its end; none when only the collator can order the name.
    [[nodiscard]] char* writeKey(std::string_view name, char* key) const;

private:
    /// Where a character stands: 0 for those that are left to the collator.
    struct Weight final
    {
        std::uint8_t letter = 0;
        std::uint8_t accent = 0; ///< 1 for the letter without an accent
    };

    static constexpr char32_t firstMark = 0x300;
    static constexpr std::size_t markCount = 0x30;

    void learnWeights(const icu::RuleBasedCollator& collator);
    void dropContractions(const icu::RuleBasedCollator& collator);
    void dropCharactersAmongDigits();
    void learnCompositions();
    [[nodiscard]] char32_t nextCharacter(std::string_view name, std::size_t& place) const;
    [[nodiscard]] char* writeNumber(std::string_view name, std::size_t& place, char* key) const;
    [[nodiscard]] bool isMarkOfPlainLetter(std::string_view name, std::size_t place) const;
    [[nodiscard]] char* writeAccents(std::string_view name, char* key) const;

    std::array<Weight, 256> m_weights{};
    std::array<std::uint8_t, 256> m_plainLetters{}; ///< letters of ASCII without accents, 0 for all else
    std::array<std::array<std::uint8_t, markCount>, 128> m_composed{};
};

} // namespace wendlore
