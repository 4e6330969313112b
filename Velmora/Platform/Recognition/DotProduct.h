// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace velmora {

/// The sum of the products of so many bytes, by the widest arithmetic that the processor has. The
/// count must keep the sum below 2³¹: 33,000 for unsigned bytes, twice as many for signed ones.
int dotProduct(const std::int8_t* a, const std::int8_t* b, int count);
int dotProduct(const std::uint8_t* a, const std::uint8_t* b, int count);

}  // namespace velmora
