#include "Vault/ByteScanner.h"

#include <algorithm>
#include <array>
#include <utility>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace wendlore {

namespace {

using Byte = std::uint8_t;
using Find = std::size_t (*)(const BytePattern*, const Byte*, std::size_t, std::size_t);

std::size_t findNothing(const BytePattern*, const Byte*, std::size_t size, std::size_t)
{
    return size;
}

[[gnu::always_inline]] inline bool stands(const BytePattern::Probe& probe, const Byte* place)
{
    return (place[probe.offset] | probe.mask) == probe.value;
}

template <int Count>
[[gnu::always_inline]] inline bool isCandidate(const BytePattern* patterns, const Byte* place)
{
    for (int k = 0; k < Count; ++k) {
        const BytePattern& each = patterns[k];
        if (each.beginsAt(place) && stands(each.first, place) && stands(each.second, place))
            return true;
    }
    return false;
}

#if defined(__x86_64__)

/// The first candidate among the places from `text` on whose bits are set.
template <int Count>
[[gnu::always_inline]] inline const Byte* firstCandidate(const BytePattern* patterns, const Byte* text,
                                                         unsigned bits)
{
    for (; bits != 0; bits &= bits - 1) {
        const Byte* const place = text + __builtin_ctz(bits);
        if (isCandidate<Count>(patterns, place))
            return place;
    }
    return nullptr;
}

template <int Count>
std::size_t findSse2(const BytePattern* patterns, const Byte* text, std::size_t size, std::size_t from)
{
    __m128i value1[Count], mask1[Count], value2[Count], mask2[Count];
    for (int k = 0; k < Count; ++k) {
        value1[k] = _mm_set1_epi8(static_cast<char>(patterns[k].first.value));
        mask1[k] = _mm_set1_epi8(static_cast<char>(patterns[k].first.mask));
        value2[k] = _mm_set1_epi8(static_cast<char>(patterns[k].second.value));
        mask2[k] = _mm_set1_epi8(static_cast<char>(patterns[k].second.mask));
    }
    const auto load = [](const Byte* at) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at)); };
    for (std::size_t i = from; i < size; i += 16) {
        __m128i found = _mm_setzero_si128();
        for (int k = 0; k < Count; ++k) {
            const __m128i one = load(text + i + patterns[k].first.offset);
            const __m128i two = load(text + i + patterns[k].second.offset);
            found =
                _mm_or_si128(found, _mm_and_si128(_mm_cmpeq_epi8(_mm_or_si128(one, mask1[k]), value1[k]),
                                                  _mm_cmpeq_epi8(_mm_or_si128(two, mask2[k]), value2[k])));
        }
        const auto bits = static_cast<unsigned>(_mm_movemask_epi8(found));
        if (const Byte* const place = firstCandidate<Count>(patterns, text + i, bits))
            return std::min(static_cast<std::size_t>(place - text), size);
    }
    return size;
}

template <int Count>
__attribute__((target("avx2"))) std::size_t findAvx2(const BytePattern* patterns, const Byte* text,
                                                     std::size_t size, std::size_t from)
{
    __m256i value1[Count], mask1[Count], value2[Count], mask2[Count];
    for (int k = 0; k < Count; ++k) {
        value1[k] = _mm256_set1_epi8(static_cast<char>(patterns[k].first.value));
        mask1[k] = _mm256_set1_epi8(static_cast<char>(patterns[k].first.mask));
        value2[k] = _mm256_set1_epi8(static_cast<char>(patterns[k].second.value));
        mask2[k] = _mm256_set1_epi8(static_cast<char>(patterns[k].second.mask));
    }
    for (std::size_t i = from; i < size; i += 32) {
        __m256i found = _mm256_setzero_si256();
        for (int k = 0; k < Count; ++k) {
            const Byte* const at = text + i;
            const __m256i one =
                _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at + patterns[k].first.offset));
            const __m256i two =
                _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at + patterns[k].second.offset));
            found = _mm256_or_si256(
                found, _mm256_and_si256(_mm256_cmpeq_epi8(_mm256_or_si256(one, mask1[k]), value1[k]),
                                        _mm256_cmpeq_epi8(_mm256_or_si256(two, mask2[k]), value2[k])));
        }
        const auto bits = static_cast<unsigned>(_mm256_movemask_epi8(found));
        if (const Byte* const place = firstCandidate<Count>(patterns, text + i, bits))
            return std::min(static_cast<std::size_t>(place - text), size);
    }
    return size;
}

template <int... Counts>
constexpr auto sse2Table(std::integer_sequence<int, Counts...>)
{
    return std::array<Find, sizeof...(Counts) + 1>{findNothing, findSse2<Counts + 1>...};
}

template <int... Counts>
constexpr auto avx2Table(std::integer_sequence<int, Counts...>)
{
    return std::array<Find, sizeof...(Counts) + 1>{findNothing, findAvx2<Counts + 1>...};
}

Find findFor(std::size_t patterns, ByteScanner::Width width)
{
    using Counts = std::make_integer_sequence<int, ByteScanner::maximumPatterns>;
    static const bool hasAvx2 = __builtin_cpu_supports("avx2");
    return width == ByteScanner::Width::widest && hasAvx2 ? avx2Table(Counts{})[patterns]
                                                          : sse2Table(Counts{})[patterns];
}

#else

/// The same by one byte at a time, for processors that have no fast path here.
template <int Count>
std::size_t findPlainly(const BytePattern* patterns, const Byte* text, std::size_t size, std::size_t from)
{
    for (std::size_t i = from; i < size; ++i) {
        if (isCandidate<Count>(patterns, text + i))
            return i;
    }
    return size;
}

Find findFor(std::size_t patterns, ByteScanner::Width)
{
    static constexpr std::array<Find, ByteScanner::maximumPatterns + 1> table{
        findNothing,    findPlainly<1>, findPlainly<2>, findPlainly<3>, findPlainly<4>,
        findPlainly<5>, findPlainly<6>, findPlainly<7>, findPlainly<8>};
    return table[patterns];
}

#endif

} // namespace

void BytePattern::setBeginning(std::string_view bytes, std::string_view masks)
{
    const std::size_t size = std::min(bytes.size(), sizeof beginning);
    std::memcpy(&beginning, bytes.data(), size);
    std::memcpy(&mask, masks.data(), size);
    std::memset(&compared, 0xFF, size);
}

ByteScanner::ByteScanner(std::vector<BytePattern> patterns, Width width)
    : m_patterns(std::move(patterns))
    , m_find(findFor(m_patterns.size(), width))
{}

} // namespace wendlore
