// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

namespace velmora::test {

/// How different two spoken sounds are, whatever their loudness and a little slower or faster: 0
/// for the same, around 1 for sounds that have nothing in common. Both at this many samples a
/// second. By the spectra of short frames, each compared with the one of the other sound that
/// stands in its place when both are stretched to fit best (dynamic time warping).
double difference(const std::vector<std::int16_t>& one, const std::vector<std::int16_t>& other,
                  int samplesPerSecond);

}  // namespace velmora::test
