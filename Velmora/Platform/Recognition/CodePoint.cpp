// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/CodePoint.h"

#include <array>
#include <cstddef>

namespace velmora {

char32_t firstCodePoint(std::string_view utf8) {
    if (utf8.empty()) {
        return 0;
    }
    const auto byte = [utf8](std::size_t i) {
        return static_cast<char32_t>(static_cast<unsigned char>(utf8[i]));
    };
    const char32_t lead = byte(0);
    if (lead < 0x80) {
        return lead;
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 0;
    if (length == 0 || utf8.size() < length) {
        return 0xFFFD;
    }
    static constexpr std::array<char32_t, 5> leadBits{0, 0, 0x1F, 0x0F, 0x07};
    char32_t value = lead & leadBits[length];
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) {
            return 0xFFFD;
        }
        value = (value << 6) | (byte(i) & 0x3F);
    }
    return value;
}

std::u32string codePointsOf(std::string_view utf8) {
    std::u32string points;
    while (!utf8.empty()) {
        const char32_t point = firstCodePoint(utf8);
        points += point;
        utf8.remove_prefix(
            point == 0xFFFD && utf8.substr(0, 3) != "\xEF\xBF\xBD" ? 1 : utf8Of(point).size());
    }
    return points;
}

std::string utf8Of(char32_t codePoint) {
    std::string out;
    const auto put = [&out](char32_t value) { out += static_cast<char>(value); };
    if (codePoint < 0x80) {
        put(codePoint);
    } else if (codePoint < 0x800) {
        put(0xC0 | (codePoint >> 6));
        put(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        put(0xE0 | (codePoint >> 12));
        put(0x80 | ((codePoint >> 6) & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    } else {
        put(0xF0 | (codePoint >> 18));
        put(0x80 | ((codePoint >> 12) & 0x3F));
        put(0x80 | ((codePoint >> 6) & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    }
    return out;
}

}  // namespace velmora
