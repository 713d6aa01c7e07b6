#include "Vault/TextLines.h"

#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <memory>

namespace wendlore {

namespace {

constexpr int snippetLength = 120;

/// How many bytes the line end at `place` has; 0 when there is none.
std::size_t lineEndLength(std::string_view text, std::size_t place)
{
    const auto byte = static_cast<std::uint8_t>(text[place]);
    if (byte >= 0x0A && byte <= 0x0D)
        return 1;
    if (byte == 0xC2)
        return text.substr(place, 2) == "\xC2\x85" ? 2 : 0;
    if (byte != 0xE2)
        return 0;
    const std::string_view three = text.substr(place, 3);
    return three == "\xE2\x80\xA8" || three == "\xE2\x80\xA9" ? 3 : 0;
}

bool isBlank(UChar32 character)
{
    return character == '\t' || u_charType(character) == U_SPACE_SEPARATOR;
}

std::string_view trimmed(std::string_view line)
{
    const auto size = static_cast<int32_t>(line.size());
    int32_t start = 0;
    for (int32_t next = start; next < size; start = next) {
        UChar32 character = 0;
        U8_NEXT(line.data(), next, size, character);
        if (!isBlank(character))
            break;
    }
    int32_t end = size;
    for (int32_t previous = end; previous > start; end = previous) {
        UChar32 character = 0;
        U8_PREV(line.data(), start, previous, character);
        if (!isBlank(character))
            break;
    }
    return line.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(end - start));
}

/// Characters that are one user-perceived character whatever stands beside them, but for marks and joiners
/// behind them.
bool standsAlone(std::uint8_t first)
{
    return first < 0xCC;
}

/// The first `snippetLength` characters where all of them are simple; nothing where the full rules are
/// needed.
std::string_view simplePrefix(std::string_view line)
{
    std::size_t place = 0;
    for (int characters = 0; place < line.size(); ++characters) {
        const auto byte = static_cast<std::uint8_t>(line[place]);
        if (!standsAlone(byte))
            return {};
        if (characters == snippetLength)
            return line.substr(0, place);
        place += byte < 0x80 ? 1 : 2;
    }
    return line;
}

} // namespace

std::size_t lineStart(std::string_view text, std::size_t place)
{
    for (std::size_t start = place; start > 0; --start) {
        // A line end's first byte is looked for, so one of several bytes is met whole.
        if (const std::size_t length = lineEndLength(text, start - 1);
            length != 0 && start - 1 + length <= place)
            return start - 1 + length;
    }
    return 0;
}

std::size_t lineEnd(std::string_view text, std::size_t place)
{
    for (std::size_t end = place; end < text.size(); ++end) {
        if (lineEndLength(text, end) != 0)
            return end;
    }
    return text.size();
}

std::size_t nextLine(std::string_view text, std::size_t end)
{
    return end < text.size() ? end + lineEndLength(text, end) : end + 1;
}

std::string_view snippetOf(std::string_view line)
{
    const std::string_view text = trimmed(line);
    if (text.size() <= snippetLength)
        return text;
    // Enough bytes for the longest sensible characters; a cut inside one of them only shortens the last of
    // them.
    constexpr std::size_t bytesPerCharacter = 64;
    if (const std::string_view prefix = simplePrefix(text.substr(0, snippetLength * 2 + 2));
        !prefix.empty() && prefix.size() < std::min<std::size_t>(text.size(), snippetLength * 2 + 2))
        return prefix;

    UErrorCode status = U_ZERO_ERROR;
    thread_local const std::unique_ptr<icu::BreakIterator> breaks(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    const std::string_view part = text.substr(0, snippetLength * bytesPerCharacter);
    UText utf8 = UTEXT_INITIALIZER;
    utext_openUTF8(&utf8, part.data(), static_cast<int64_t>(part.size()), &status);
    breaks->setText(&utf8, status);
    int32_t end = breaks->first();
    for (int characters = 0; characters < snippetLength; ++characters) {
        const int32_t next = breaks->next();
        if (next == icu::BreakIterator::DONE)
            break;
        end = next;
    }
    utext_close(&utf8);
    return text.substr(0, static_cast<std::size_t>(end));
}

} // namespace wendlore
