// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

/// One code point and the bytes it takes.
struct Utf8Scalar {
    char32_t value = 0;
    std::size_t length = 0;
};

/// The code point that begins at `bytes`, which must lie in valid UTF-8 and not at its end.
inline Utf8Scalar utf8ScalarAt(const char* bytes) {
    const auto byte = [bytes](std::size_t index) {
        return static_cast<char32_t>(static_cast<unsigned char>(bytes[index]));
    };
    const char32_t lead = byte(0);
    if (lead < 0x80) {
        return {lead, 1};
    }
    if (lead >= 0xE0 && lead < 0xF0) {
        return {(lead & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F), 3};
    }
    if (lead < 0xE0) {
        return {(lead & 0x1F) << 6 | (byte(1) & 0x3F), 2};
    }
    return {(lead & 0x07) << 18 | (byte(1) & 0x3F) << 12 | (byte(2) & 0x3F) << 6 | (byte(3) & 0x3F),
            4};
}

/// The code point that ends just before `end`, which must lie in valid UTF-8 and not at its start.
inline Utf8Scalar utf8ScalarBefore(const char* end) {
    const char* start = end - 1;
    while ((static_cast<unsigned char>(*start) & 0xC0) == 0x80) {
        --start;
    }
    return utf8ScalarAt(start);
}

/// True when the bytes are well-formed UTF-8: no overlong forms, no surrogates, nothing above
/// U+10FFFF. NUL is a character like any other.
bool isValidUtf8(std::string_view bytes);

/// The first position at or after `from`, where a sequence begins, whose sequence is broken; the
/// size of the text where none is.
std::size_t firstInvalidUtf8(std::string_view bytes, std::size_t from);

/// The text itself where it is valid; otherwise with U+FFFD in place of every maximal part of a
/// sequence that cannot be completed.
std::string repairedUtf8(std::string_view bytes);

/// Appends one code point; a surrogate or a value above U+10FFFF becomes U+FFFD.
void appendUtf8(std::string& text, char32_t scalar);

}  // namespace velmora
