// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace velmora {

/// The first code point of a UTF-8 text; 0 where it is empty, U+FFFD where it is damaged.
char32_t firstCodePoint(std::string_view utf8);

/// All code points of a UTF-8 text; U+FFFD for each damaged place.
std::u32string codePointsOf(std::string_view utf8);

/// A code point in UTF-8.
std::string utf8Of(char32_t codePoint);

/// A Han character of any block.
constexpr bool isHan(char32_t c) {
    return (c >= 0x4E00 && c <= 0x9FFF) || (c >= 0x3400 && c <= 0x4DBF) ||
           (c >= 0xF900 && c <= 0xFAFF) || (c >= 0x20000 && c <= 0x3FFFF);
}

/// Punctuation that takes up a full-width cell, mostly with ink in a corner of it only.
constexpr bool isFullWidthPunctuation(char32_t c) {
    return (c >= 0x3000 && c <= 0x303F) || (c >= 0xFF00 && c <= 0xFF5E) || c == 0x201C ||
           c == 0x201D || c == 0x2018 || c == 0x2019 || c == 0x2026 || c == 0x2014;
}

/// Hiragana, katakana or hangul.
constexpr bool isKanaOrHangul(char32_t c) {
    return (c >= 0x3040 && c <= 0x30FF) || (c >= 0x31F0 && c <= 0x31FF) ||
           (c >= 0x1100 && c <= 0x11FF) || (c >= 0xAC00 && c <= 0xD7AF) ||
           (c >= 0xFF66 && c <= 0xFF9D);
}

}  // namespace velmora
