// SPDX-License-Identifier: MIT
#include "VelmoraCore/Utf8Scan.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "VelmoraCore/LineSplitter.h"
#include "VelmoraCore/Utf8.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace velmora {
namespace {

#if defined(__x86_64__)

// Validation after J. Keiser and D. Lemire, "Validating UTF-8 in less than one instruction per
// byte" (2021): each kind of error is a bit, and three small tables, asked with the halves of two
// neighbouring bytes, have a bit in common exactly where that error is. The highest bit stands for
// two continuation bytes in a row, which is right where a longer sequence asks for them.
constexpr std::uint8_t tooShort = 1 << 0;
constexpr std::uint8_t tooLong = 1 << 1;
constexpr std::uint8_t overlong3 = 1 << 2;
constexpr std::uint8_t tooLarge = 1 << 3;
constexpr std::uint8_t surrogate = 1 << 4;
constexpr std::uint8_t overlong2 = 1 << 5;
constexpr std::uint8_t tooLarge1000 = 1 << 6;  ///< Also the overlong forms of four bytes.
constexpr std::uint8_t twoContinuations = 1 << 7;
constexpr std::uint8_t carry = tooShort | tooLong | twoContinuations;

using HalfTable = std::array<std::uint8_t, 16>;

constexpr HalfTable firstByteHigh = {tooLong,
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
                                     tooShort | tooLarge | tooLarge1000};

constexpr HalfTable firstByteLow = {carry | overlong3 | overlong2 | tooLarge1000,
                                    carry | overlong2,
                                    carry,
                                    carry,
                                    carry | tooLarge,
                                    carry | tooLarge | tooLarge1000,
                                    carry | tooLarge | tooLarge1000,
                                    carry | tooLarge | tooLarge1000,
                                    carry | tooLarge | tooLarge1000,
                                    carry | tooLarge | tooLarge1000,
                                    carry | tooLarge | tooLarge1000,
                                    carry | tooLarge | tooLarge1000,
                                    carry | tooLarge | tooLarge1000,
                                    carry | tooLarge | tooLarge1000 | surrogate,
                                    carry | tooLarge | tooLarge1000,
                                    carry | tooLarge | tooLarge1000};

constexpr std::uint8_t anyTail = tooLong | overlong2 | twoContinuations;

constexpr HalfTable secondByteHigh = {tooShort,
                                      tooShort,
                                      tooShort,
                                      tooShort,
                                      tooShort,
                                      tooShort,
                                      tooShort,
                                      tooShort,
                                      anyTail | overlong3 | tooLarge1000,
                                      anyTail | overlong3 | tooLarge,
                                      anyTail | surrogate | tooLarge,
                                      anyTail | surrogate | tooLarge,
                                      tooShort,
                                      tooShort,
                                      tooShort,
                                      tooShort};

constexpr std::size_t blockSize = 32;

/// The state of the pass between two blocks.
class BlockScanner {
  public:
    __attribute__((target("avx2"))) BlockScanner()
        : previous_(_mm256_setzero_si256()),
          errors_(_mm256_setzero_si256()),
          rareLineEnds_(_mm256_setzero_si256()) {}

    __attribute__((target("avx2"))) void add(const char* bytes) {
        const __m256i block = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(bytes));
        const __m256i one = before<1>(block);
        const __m256i two = before<2>(block);
        const __m256i isNot = _mm256_andnot_si256(equal(block, '\n'), equal(one, '\r'));
        const __m256i tabOrFeed = _mm256_or_si256(equal(block, '\v'), equal(block, '\f'));
        rareLineEnds_ = _mm256_or_si256(rareLineEnds_, _mm256_or_si256(isNot, tabOrFeed));
        if (_mm256_movemask_epi8(_mm256_or_si256(block, previous_)) != 0) {
            addRareLongLineEnds(block, one, two);
            errors_ = _mm256_or_si256(errors_, errorsOf(block, one, two, before<3>(block)));
        }
        previous_ = block;
    }

    __attribute__((target("avx2"))) Utf8Scan result() const {
        return {_mm256_testz_si256(errors_, errors_) != 0,
                _mm256_testz_si256(rareLineEnds_, rareLineEnds_) == 0};
    }

  private:
    __attribute__((target("avx2"))) static __m256i equal(__m256i bytes, char byte) {
        return _mm256_cmpeq_epi8(bytes, _mm256_set1_epi8(byte));
    }

    /// The bytes that stand so many places before those of the block.
    template <int distance>
    __attribute__((target("avx2"))) __m256i before(__m256i block) const {
        return _mm256_alignr_epi8(block, _mm256_permute2x128_si256(previous_, block, 0x21),
                                  16 - distance);
    }

    __attribute__((target("avx2"))) static __m256i look(const HalfTable& table, __m256i halves) {
        const __m128i entries = _mm_loadu_si128(reinterpret_cast<const __m128i*>(table.data()));
        return _mm256_shuffle_epi8(_mm256_broadcastsi128_si256(entries), halves);
    }

    __attribute__((target("avx2"))) static __m256i highHalves(__m256i bytes) {
        return _mm256_and_si256(_mm256_srli_epi16(bytes, 4), _mm256_set1_epi8(0x0F));
    }

    __attribute__((target("avx2"))) static __m256i errorsOf(__m256i block, __m256i one, __m256i two,
                                                            __m256i three) {
        const __m256i lowHalves = _mm256_and_si256(one, _mm256_set1_epi8(0x0F));
        const __m256i special = _mm256_and_si256(
            _mm256_and_si256(look(firstByteHigh, highHalves(one)), look(firstByteLow, lowHalves)),
            look(secondByteHigh, highHalves(block)));
        // Saturating subtraction leaves the highest bit only behind leads of three or four bytes.
        const __m256i third = _mm256_subs_epu8(two, _mm256_set1_epi8(0xE0 - 0x80));
        const __m256i fourth = _mm256_subs_epu8(three, _mm256_set1_epi8(0xF0 - 0x80));
        const __m256i expected =
            _mm256_and_si256(_mm256_or_si256(third, fourth), _mm256_set1_epi8(-0x80));
        return _mm256_xor_si256(expected, special);
    }

    /// U+0085, U+2028 and U+2029.
    __attribute__((target("avx2"))) void addRareLongLineEnds(__m256i block, __m256i one,
                                                             __m256i two) {
        const __m256i nextLine = _mm256_and_si256(equal(block, '\x85'), equal(one, '\xC2'));
        const __m256i even = _mm256_and_si256(block, _mm256_set1_epi8(-2));
        const __m256i separator = _mm256_and_si256(
            equal(even, '\xA8'), _mm256_and_si256(equal(one, '\x80'), equal(two, '\xE2')));
        rareLineEnds_ = _mm256_or_si256(rareLineEnds_, _mm256_or_si256(nextLine, separator));
    }

    __m256i previous_;
    __m256i errors_;
    __m256i rareLineEnds_;
};

__attribute__((target("avx2"))) Utf8Scan vectorScan(std::string_view bytes) {
    BlockScanner scanner;
    std::size_t at = 0;
    for (; at + blockSize <= bytes.size(); at += blockSize) {
        scanner.add(bytes.data() + at);
    }
    // The rest, and zeros behind it that no sequence may run into; a CR at the very end is followed
    // by one of them and counts as rare, which costs nothing but time.
    std::array<char, 2 * blockSize> rest{};
    std::memcpy(rest.data(), bytes.data() + at, bytes.size() - at);
    scanner.add(rest.data());
    scanner.add(rest.data() + blockSize);
    return scanner.result();
}

#endif

}  // namespace

Utf8Scan Utf8Scan::of(std::string_view bytes) {
#if defined(__x86_64__)
    static const bool vectors = __builtin_cpu_supports("avx2") != 0;
    if (vectors && bytes.size() >= blockSize) {
        return vectorScan(bytes);
    }
#endif
    return portable(bytes);
}

Utf8Scan Utf8Scan::portable(std::string_view bytes) {
    Utf8Scan scan;
    scan.valid = firstInvalidUtf8(bytes, 0) == bytes.size();
    for (std::size_t at = 0; scan.valid && !scan.hasRareLineEnds && at < bytes.size(); ++at) {
        const std::size_t newline = newlineLength(bytes, at);
        scan.hasRareLineEnds =
            newline > 1 || (newline == 1 && bytes[at] != '\n' &&
                            (bytes[at] != '\r' || bytes.substr(at + 1, 1) != "\n"));
    }
    return scan;
}

}  // namespace velmora
