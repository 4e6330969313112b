// SPDX-License-Identifier: MIT
#include "VelmoraCore/CharacterText.h"

#include <algorithm>

#include "VelmoraCore/CharacterBoundaries.h"
#include "VelmoraCore/Utf8.h"

namespace velmora {
namespace {

/// The number of code points of a valid text.
std::size_t scalarCount(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char byte) { return static_cast<signed char>(byte) >= -64; }));
}

std::string validText(std::string_view utf8) {
    return isValidUtf8(utf8) ? std::string(utf8) : repairedUtf8(utf8);
}

/// Appends the UTF-16 units from..<to of a code point that begins at unit 0 of itself. Half of a
/// pair cannot be written in UTF-8 and becomes U+FFFD.
void appendUnits(std::string& result, std::string_view bytes, char32_t scalar, std::size_t from,
                 std::size_t to) {
    const std::size_t units = scalar >= 0x10000 ? 2 : 1;
    if (to - from == units) {
        result.append(bytes);
    } else if (to > from) {
        appendUtf8(result, U'\uFFFD');
    }
}

}  // namespace

CharacterText::CharacterText(std::string_view utf8) : text_(validText(utf8)) {
    byteOffsets_.reserve(scalarCount(text_) + 1);
    appendCharacterBoundaries(text_, byteOffsets_);
}

std::string_view CharacterText::slice(std::size_t from, std::size_t to) const {
    const std::size_t end = std::min(to, count());
    const std::size_t start = std::min(from, end);
    return std::string_view(text_).substr(byteOffsets_[start],
                                          byteOffsets_[end] - byteOffsets_[start]);
}

std::size_t CharacterText::utf16Offset(std::size_t index) const {
    return velmora::utf16Length(slice(0, index));
}

std::optional<std::size_t> CharacterText::characterAtUtf16Offset(std::size_t offset) const {
    std::size_t units = 0;
    for (std::size_t index = 0; index < count() && units < offset; ++index) {
        units += velmora::utf16Length((*this)[index]);
        if (units == offset) {
            return index + 1;
        }
    }
    return offset == 0 ? std::optional<std::size_t>(0) : std::nullopt;
}

bool isChinese(std::string_view character) {
    // Both ranges are written in three bytes with leads from E3 to E9.
    for (std::size_t at = 0; at + 3 <= character.size(); ++at) {
        const auto lead = static_cast<unsigned char>(character[at]);
        if (lead < 0xE3 || lead > 0xE9) {
            continue;
        }
        const char32_t scalar = utf8ScalarAt(character.data() + at).value;
        if ((scalar >= 0x4E00 && scalar <= 0x9FFF) || (scalar >= 0x3400 && scalar <= 0x4DBF)) {
            return true;
        }
    }
    return false;
}

std::optional<std::size_t> firstChineseCharacterOffset(const CharacterText& text) {
    for (std::size_t index = 0; index < text.count(); ++index) {
        if (isChinese(text[index])) {
            return index;
        }
    }
    return std::nullopt;
}

std::size_t utf16Length(std::string_view utf8) {
    // One unit per lead byte, one more for the four-byte sequences.
    std::size_t units = 0;
    for (const char byte : utf8) {
        const auto value = static_cast<unsigned char>(byte);
        units += static_cast<std::size_t>((value & 0xC0) != 0x80) +
                 static_cast<std::size_t>(value >= 0xF0);
    }
    return units;
}

std::string utf16Substring(std::string_view utf8, std::size_t location, std::size_t length) {
    const std::string text = validText(utf8);
    const std::size_t end = length > text.size() ? location + text.size() : location + length;
    std::string result;
    std::size_t unit = 0;
    for (std::size_t at = 0; at < text.size() && unit < end;) {
        const Utf8Scalar scalar = utf8ScalarAt(text.data() + at);
        const std::size_t next = unit + (scalar.value >= 0x10000 ? 2 : 1);
        if (next > location) {
            appendUnits(result, std::string_view(text).substr(at, scalar.length), scalar.value,
                        std::max(unit, location), std::min(next, end));
        }
        unit = next;
        at += scalar.length;
    }
    return result;
}

}  // namespace velmora
