#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace wendlore {

/// Bytes at fixed distances from a place: the place is a candidate when all of them, with their mask bits
/// set, have these values. A mask of 0x20 takes an ASCII letter in either case. Two of the bytes are looked
/// for, and where they stand the first bytes are compared.
struct BytePattern final
{
    struct Probe final
    {
        std::uint8_t offset = 0;
        std::uint8_t value = 0;
        std::uint8_t mask = 0;
    };

    Probe first;
    Probe second;
    std::uint64_t beginning = 0; ///< the bytes from the place on, in the order of memory
    std::uint64_t mask = 0;
    std::uint64_t compared = 0; ///< 0xFF for each byte of them that counts

    /// Compares the first bytes from the place on with `bytes`, as far as both reach.
    void setBeginning(std::string_view bytes, std::string_view masks);
    [[nodiscard]] bool beginsAt(const std::uint8_t* place) const
    {
        std::uint64_t found = 0;
        std::memcpy(&found, place, sizeof found);
        return ((found | mask) & compared) == beginning;
    }
};

/// Finds the places in a text where any of up to eight byte patterns stands, many bytes at a time.
class ByteScanner final
{
public:
    static constexpr std::size_t maximumPatterns = 8;
    /// How many bytes after the text must be readable (their values do not matter).
    static constexpr std::size_t padding = 64;
    /// A probe's offset is smaller than this.
    static constexpr std::size_t maximumOffset = 24;

    /// What the processor is asked to do: its widest registers, or those that every one of its kind has.
    enum class Width { widest, base };

    explicit ByteScanner(std::vector<BytePattern> patterns = {}, Width width = Width::widest);

    [[nodiscard]] bool isEmpty() const { return m_patterns.empty(); }
    /// The first candidate at or after `from`, or `size` when there is none.
    [[nodiscard]] std::size_t find(const std::uint8_t* text, std::size_t size, std::size_t from) const
    {
        return m_find(m_patterns.data(), text, size, from);
    }

private:
    using Find = std::size_t (*)(const BytePattern*, const std::uint8_t*, std::size_t, std::size_t);

    std::vector<BytePattern> m_patterns;
    Find m_find;
};

} // namespace wendlore
