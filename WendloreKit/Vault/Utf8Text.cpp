#include "Vault/Utf8Text.h"

#include <QUtf8StringView>

#include <cstdint>
#include <cstring>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace wendlore {

namespace {

bool isUtf8Plainly(std::string_view text)
{
    return QUtf8StringView(text.data(), static_cast<qsizetype>(text.size())).isValidUtf8();
}

#if defined(__x86_64__)

// What can be wrong with two bytes that follow each other, a bit each. Three tables, looked up by the high
// and the low half of the first byte and the high half of the second, say what each half allows to be wrong;
// what all three agree on is wrong.
enum Fault : std::uint8_t {
    tooShort = 1 << 0,         // a lead byte, and then no continuation
    tooLong = 1 << 1,          // ASCII, and then a continuation
    overlong3 = 1 << 2,        // E0 80..9F
    tooLarge = 1 << 3,         // F4 90.., F5..
    surrogate = 1 << 4,        // ED A0..
    overlong2 = 1 << 5,        // C0, C1
    tooLarge1000 = 1 << 6,     // F5.., whatever follows
    overlong4 = 1 << 6,        // F0 80..8F
    twoContinuations = 1 << 7, // fine only behind a longer lead byte, which is looked at apart
};
constexpr std::uint8_t always = tooShort | tooLong | twoContinuations;
constexpr std::uint8_t beyond = always | tooLarge | tooLarge1000;
constexpr std::uint8_t anyContinuation = tooLong | overlong2 | twoContinuations;

alignas(16) constexpr std::uint8_t firstHigh[16] = {tooLong,
                                                    tooLong,
                                                    tooLong,
                                                    tooLong,
                                                    tooLong,
                                                    tooLong,
                                                    tooLong,
                                                    tooLong,
                                                    twoContinuations,
                                                    twoContinuations,
                                                    twoContinuations,
                                                    twoContinuations,
                                                    tooShort | overlong2,
                                                    tooShort,
                                                    tooShort | overlong3 | surrogate,
                                                    tooShort | tooLarge | tooLarge1000 | overlong4};
alignas(16) constexpr std::uint8_t firstLow[16] = {always | overlong3 | overlong2 | overlong4,
                                                   always | overlong2,
                                                   always,
                                                   always,
                                                   always | tooLarge,
                                                   beyond,
                                                   beyond,
                                                   beyond,
                                                   beyond,
                                                   beyond,
                                                   beyond,
                                                   beyond,
                                                   beyond,
                                                   beyond | surrogate,
                                                   beyond,
                                                   beyond};
alignas(16) constexpr std::uint8_t secondHigh[16] = {tooShort,
                                                     tooShort,
                                                     tooShort,
                                                     tooShort,
                                                     tooShort,
                                                     tooShort,
                                                     tooShort,
                                                     tooShort,
                                                     anyContinuation | overlong3 | tooLarge1000 | overlong4,
                                                     anyContinuation | overlong3 | tooLarge,
                                                     anyContinuation | surrogate | tooLarge,
                                                     anyContinuation | surrogate | tooLarge,
                                                     tooShort,
                                                     tooShort,
                                                     tooShort,
                                                     tooShort};

/// Checks 32 bytes at a time.
class WideCheck final
{
public:
    __attribute__((target("avx2"))) static bool isUtf8(std::string_view text)
    {
        constexpr std::size_t width = 32;
        const __m256i zero = _mm256_setzero_si256();
        __m256i faults = zero;
        __m256i previous = zero;
        std::size_t place = 0;
        for (; place + width <= text.size(); place += width) {
            const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(text.data() + place));
            faults = _mm256_or_si256(faults, faultsIn(bytes, previous));
            previous = bytes;
        }
        // The zeros behind the last bytes show a character that is cut off.
        alignas(32) char rest[width] = {};
        std::memcpy(rest, text.data() + place, text.size() - place);
        const __m256i last = _mm256_load_si256(reinterpret_cast<const __m256i*>(rest));
        faults = _mm256_or_si256(faults, faultsIn(last, previous));
        faults = _mm256_or_si256(faults, faultsIn(zero, last));
        return _mm256_testz_si256(faults, faults) != 0;
    }

private:
    __attribute__((target("avx2"))) static __m256i table(const std::uint8_t* values)
    {
        return _mm256_broadcastsi128_si256(_mm_load_si128(reinterpret_cast<const __m128i*>(values)));
    }

    __attribute__((target("avx2"))) static __m256i highHalf(__m256i bytes)
    {
        return _mm256_and_si256(_mm256_srli_epi16(bytes, 4), _mm256_set1_epi8(0x0F));
    }

    /// `previous` are the 32 bytes before `bytes`.
    __attribute__((target("avx2"))) static __m256i faultsIn(__m256i bytes, __m256i previous)
    {
        if (_mm256_movemask_epi8(_mm256_or_si256(bytes, previous)) == 0)
            return _mm256_setzero_si256();
        const __m256i joined = _mm256_permute2x128_si256(previous, bytes, 0x21);
        const __m256i oneBack = _mm256_alignr_epi8(bytes, joined, 15);
        const __m256i twoBack = _mm256_alignr_epi8(bytes, joined, 14);
        const __m256i threeBack = _mm256_alignr_epi8(bytes, joined, 13);
        const __m256i lowHalf = _mm256_and_si256(oneBack, _mm256_set1_epi8(0x0F));
        const __m256i pair =
            _mm256_and_si256(_mm256_and_si256(_mm256_shuffle_epi8(table(firstHigh), highHalf(oneBack)),
                                              _mm256_shuffle_epi8(table(firstLow), lowHalf)),
                             _mm256_shuffle_epi8(table(secondHigh), highHalf(bytes)));
        // Third and fourth bytes must be continuations behind a continuation, and only they may.
        const __m256i third = _mm256_subs_epu8(twoBack, _mm256_set1_epi8(static_cast<char>(0xE0 - 0x80)));
        const __m256i fourth = _mm256_subs_epu8(threeBack, _mm256_set1_epi8(static_cast<char>(0xF0 - 0x80)));
        const __m256i mustContinue =
            _mm256_and_si256(_mm256_or_si256(third, fourth), _mm256_set1_epi8(static_cast<char>(0x80)));
        return _mm256_xor_si256(mustContinue, pair);
    }
};

#endif

} // namespace

bool isUtf8(std::string_view text)
{
#if defined(__x86_64__)
    static const bool hasAvx2 = __builtin_cpu_supports("avx2");
    if (hasAvx2)
        return WideCheck::isUtf8(text);
#endif
    return isUtf8Plainly(text);
}

} // namespace wendlore
