// SPDX-License-Identifier: MIT
#include "VelmoraCore/Utf8.h"

#include <cstdint>
#include <cstring>

#include "VelmoraCore/Utf8Scan.h"

namespace velmora {
namespace {

/// What the bytes at a position are.
struct Sequence {
    std::size_t length = 0;  ///< Bytes of the sequence, or of the part to replace.
    bool valid = false;
};

/// The table of well-formed sequences (Unicode Standard, table 3-7): the lead byte decides how many
/// bytes follow and which second bytes are allowed.
struct LeadRule {
    std::size_t length = 0;
    unsigned char secondLow = 0x80;
    unsigned char secondHigh = 0xBF;
};

constexpr LeadRule leadRule(unsigned char lead) {
    if (lead >= 0xC2 && lead <= 0xDF) {
        return {2, 0x80, 0xBF};
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        return {3, static_cast<unsigned char>(lead == 0xE0 ? 0xA0 : 0x80),
                static_cast<unsigned char>(lead == 0xED ? 0x9F : 0xBF)};
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        return {4, static_cast<unsigned char>(lead == 0xF0 ? 0x90 : 0x80),
                static_cast<unsigned char>(lead == 0xF4 ? 0x8F : 0xBF)};
    }
    return {};
}

Sequence sequenceAt(std::string_view bytes, std::size_t position) {
    const auto byte = [&](std::size_t index) {
        return static_cast<unsigned char>(bytes[position + index]);
    };
    if (byte(0) < 0x80) {
        return {1, true};
    }
    const LeadRule rule = leadRule(byte(0));
    if (rule.length == 0) {
        return {1, false};
    }
    const std::size_t available = bytes.size() - position;
    if (available < 2 || byte(1) < rule.secondLow || byte(1) > rule.secondHigh) {
        return {1, false};
    }
    for (std::size_t index = 2; index < rule.length; ++index) {
        if (available <= index || (byte(index) & 0xC0) != 0x80) {
            return {index, false};
        }
    }
    return {rule.length, true};
}

}  // namespace

bool isValidUtf8(std::string_view bytes) {
    constexpr std::size_t worthVectors = 64;
    return bytes.size() < worthVectors ? firstInvalidUtf8(bytes, 0) == bytes.size()
                                       : Utf8Scan::of(bytes).valid;
}

std::size_t firstInvalidUtf8(std::string_view bytes, std::size_t from) {
    constexpr std::uint64_t highBits = 0x8080808080808080U;
    std::size_t position = from;
    while (position < bytes.size()) {
        if (bytes.size() - position >= sizeof(std::uint64_t)) {
            std::uint64_t word = 0;
            std::memcpy(&word, bytes.data() + position, sizeof word);
            if ((word & highBits) == 0) {
                position += sizeof word;
                continue;
            }
        }
        const Sequence sequence = sequenceAt(bytes, position);
        if (!sequence.valid) {
            return position;
        }
        position += sequence.length;
    }
    return position;
}

std::string repairedUtf8(std::string_view bytes) {
    std::string repaired;
    repaired.reserve(bytes.size());
    std::size_t position = 0;
    while (position < bytes.size()) {
        const std::size_t broken = firstInvalidUtf8(bytes, position);
        repaired.append(bytes.substr(position, broken - position));
        if (broken == bytes.size()) {
            break;
        }
        appendUtf8(repaired, U'\uFFFD');
        position = broken + sequenceAt(bytes, broken).length;
    }
    return repaired;
}

void appendUtf8(std::string& text, char32_t scalar) {
    if (scalar > 0x10FFFF || (scalar >= 0xD800 && scalar <= 0xDFFF)) {
        scalar = U'\uFFFD';
    }
    if (scalar < 0x80) {
        text += static_cast<char>(scalar);
    } else if (scalar < 0x800) {
        text += static_cast<char>(0xC0 | scalar >> 6);
        text += static_cast<char>(0x80 | (scalar & 0x3F));
    } else if (scalar < 0x10000) {
        text += static_cast<char>(0xE0 | scalar >> 12);
        text += static_cast<char>(0x80 | (scalar >> 6 & 0x3F));
        text += static_cast<char>(0x80 | (scalar & 0x3F));
    } else {
        text += static_cast<char>(0xF0 | scalar >> 18);
        text += static_cast<char>(0x80 | (scalar >> 12 & 0x3F));
        text += static_cast<char>(0x80 | (scalar >> 6 & 0x3F));
        text += static_cast<char>(0x80 | (scalar & 0x3F));
    }
}

}  // namespace velmora
