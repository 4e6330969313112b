// SPDX-License-Identifier: MIT
#pragma once

namespace velmora {

/// True for a code point that needs no Unicode tables: two of them in a row always have a character
/// boundary between them, each alone is one character, and each is its own composed normal form.
/// Covers what Chinese text is made of; false is always a safe answer. Between one of these and a
/// control character (line ends included) there is a boundary, too.
constexpr bool isPlainScalar(char32_t scalar) {
    const auto within = [scalar](char32_t low, char32_t high) {
        return scalar - low <= high - low;
    };
    if (within(0x4E00, 0x9FFF) || within(0x20, 0x7E) || within(0x3400, 0x4DBF)) {
        return true;
    }
    if (scalar < 0x300) {
        return scalar >= 0xA0 && scalar != 0xAD;
    }
    if (scalar < 0x10000) {
        return within(0x3001, 0x3029) || within(0x3041, 0x3096) || within(0x309D, 0x30FF) ||
               within(0xFF01, 0xFF9D) || within(0xAC00, 0xD7A3) || within(0x2010, 0x2027) ||
               within(0x3220, 0x33FF) || within(0x2460, 0x24FF) || within(0x2500, 0x27BF) ||
               within(0x3105, 0x312F);
    }
    return within(0x20000, 0x2A6DF) || within(0x2A700, 0x2EBE0) || within(0x1F300, 0x1F3FA) ||
           within(0x1F400, 0x1FAFF);
}

}  // namespace velmora
