// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

namespace velmora {

/// a + b, or nothing where it would overflow. Offsets come from other programs and may be anything.
template <typename Integer>
std::optional<Integer> checkedSum(Integer a, Integer b) {
    Integer result = 0;
    if (__builtin_add_overflow(a, b, &result)) {
        return std::nullopt;
    }
    return result;
}

/// a − b, or nothing where it would overflow.
template <typename Integer>
std::optional<Integer> checkedDifference(Integer a, Integer b) {
    Integer result = 0;
    if (__builtin_sub_overflow(a, b, &result)) {
        return std::nullopt;
    }
    return result;
}

}  // namespace velmora
