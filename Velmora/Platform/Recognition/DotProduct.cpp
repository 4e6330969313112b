// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/DotProduct.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace velmora {

namespace {

template <typename Byte>
int plainSum(const Byte* a, const Byte* b, int count) {
    int sum = 0;
    for (int i = 0; i < count; ++i) {
        sum += a[i] * b[i];
    }
    return sum;
}

#if defined(__x86_64__)

// What is built for any processor may use the narrowest arithmetic only, so that the wider one is
// chosen when the program starts.
const bool isWide = __builtin_cpu_supports("avx2") != 0;

constexpr int step = 16;  ///< Bytes that fit a register once they are widened to 16 bits.

[[gnu::target("avx2")]] __m256i widened(const std::int8_t* bytes) {
    return _mm256_cvtepi8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes)));
}

[[gnu::target("avx2")]] __m256i widened(const std::uint8_t* bytes) {
    return _mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes)));
}

template <typename Byte>
[[gnu::target("avx2")]] int wideSum(const Byte* a, const Byte* b, int count) {
    __m256i sums = _mm256_setzero_si256();
    int i = 0;
    for (; i + step <= count; i += step) {
        sums = _mm256_add_epi32(sums, _mm256_madd_epi16(widened(a + i), widened(b + i)));
    }
    __m128i four = _mm_add_epi32(_mm256_castsi256_si128(sums), _mm256_extracti128_si256(sums, 1));
    four = _mm_add_epi32(four, _mm_shuffle_epi32(four, 0x4E));
    four = _mm_add_epi32(four, _mm_shuffle_epi32(four, 0xB1));
    return _mm_cvtsi128_si32(four) + plainSum(a + i, b + i, count - i);
}

template <typename Byte>
int bestSum(const Byte* a, const Byte* b, int count) {
    return isWide ? wideSum(a, b, count) : plainSum(a, b, count);
}

#else

template <typename Byte>
int bestSum(const Byte* a, const Byte* b, int count) {
    return plainSum(a, b, count);
}

#endif

}  // namespace

int dotProduct(const std::int8_t* a, const std::int8_t* b, int count) {
    return bestSum(a, b, count);
}

int dotProduct(const std::uint8_t* a, const std::uint8_t* b, int count) {
    return bestSum(a, b, count);
}

}  // namespace velmora
