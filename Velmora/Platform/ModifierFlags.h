// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace velmora {

/// The modifier keys in effect. Only bits inside `deviceIndependentMask` are ever handed on.
struct ModifierFlags {
    static constexpr std::uint32_t capsLock = 1U << 16;
    static constexpr std::uint32_t shift = 1U << 17;
    static constexpr std::uint32_t control = 1U << 18;
    static constexpr std::uint32_t alt = 1U << 19;
    static constexpr std::uint32_t super = 1U << 20;
    static constexpr std::uint32_t deviceIndependentMask = 0xFFFF0000;

    std::uint32_t bits = 0;

    constexpr bool containsShift() const { return (bits & shift) != 0; }
    constexpr ModifierFlags masked() const { return {bits & deviceIndependentMask}; }

    bool operator==(const ModifierFlags&) const = default;
};

}  // namespace velmora
