// SPDX-License-Identifier: MIT
#pragma once

namespace velmora {

/// A half-open range of character positions (grapheme clusters) in a looked-up text.
struct MatchedTextRange {
    long long start = 0;  ///< Index of the first matched character.
    long long end = 0;    ///< Index one past the last matched character.

    /// The number of characters, never below 0.
    constexpr long long length() const { return end > start ? end - start : 0; }

    constexpr bool contains(long long offset) const { return start <= offset && offset < end; }

    bool operator==(const MatchedTextRange&) const = default;
};

}  // namespace velmora
