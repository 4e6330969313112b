// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/DotProduct.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace velmora {
namespace {

/// Bytes of every value, in an order that repeats late.
template <typename Byte>
std::vector<Byte> bytes(int count, int step) {
    std::vector<Byte> result;
    for (int i = 0; i < count; ++i) {
        result.push_back(static_cast<Byte>(i * step + i / 7));
    }
    return result;
}

template <typename Byte>
long long oneByOne(const std::vector<Byte>& a, const std::vector<Byte>& b) {
    long long sum = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        sum += static_cast<long long>(a[i]) * b[i];
    }
    return sum;
}

// No length is a multiple of what a processor takes at a time by accident.
TEST(DotProduct, IsTheSumOfTheProductsForEveryLength) {
    for (int count = 0; count < 300; ++count) {
        const auto a = bytes<std::int8_t>(count, 37);
        const auto b = bytes<std::int8_t>(count, 91);
        EXPECT_EQ(dotProduct(a.data(), b.data(), count), oneByOne(a, b)) << count;
        const auto c = bytes<std::uint8_t>(count, 37);
        const auto d = bytes<std::uint8_t>(count, 91);
        EXPECT_EQ(dotProduct(c.data(), d.data(), count), oneByOne(c, d)) << count;
    }
}

TEST(DotProduct, HoldsTheGreatestBytes) {
    const std::vector<std::uint8_t> white(33000, 255);
    EXPECT_EQ(dotProduct(white.data(), white.data(), 33000), 33000 * 255 * 255);
    const std::vector<std::int8_t> least(33000, -128);
    EXPECT_EQ(dotProduct(least.data(), least.data(), 33000), 33000 * 128 * 128);
}

}  // namespace
}  // namespace velmora
