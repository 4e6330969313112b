// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

/// A universally unique identifier (RFC 4122), a plain value of 16 bytes.
struct Uuid {
    std::array<std::uint8_t, 16> bytes{};

    /// A fresh random identifier (version 4). Safe to call from any thread.
    static Uuid random();

    /// A version 4 identifier made of 122 of these bits, which the caller has from a random source.
    static Uuid fromRandomBits(std::uint64_t high, std::uint64_t low);

    /// Reads the canonical 36-character form, upper or lower case; nothing for any other text.
    static std::optional<Uuid> parse(std::string_view text);

    /// The canonical 36-character form in upper case.
    std::string toString() const;

    auto operator<=>(const Uuid&) const = default;
};

}  // namespace velmora
