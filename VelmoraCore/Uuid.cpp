// SPDX-License-Identifier: MIT
#include "VelmoraCore/Uuid.h"

#include <cstddef>
#include <random>

namespace velmora {
namespace {

constexpr std::size_t textLength = 36;

constexpr bool isDashPosition(std::size_t position) {
    return position == 8 || position == 13 || position == 18 || position == 23;
}

constexpr int hexValue(char digit) {
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    if (digit >= 'a' && digit <= 'f') {
        return digit - 'a' + 10;
    }
    if (digit >= 'A' && digit <= 'F') {
        return digit - 'A' + 10;
    }
    return -1;
}

std::mt19937_64& threadGenerator() {
    thread_local std::mt19937_64 generator = [] {
        std::random_device device;
        std::seed_seq seed{device(), device(), device(), device(),
                           device(), device(), device(), device()};
        return std::mt19937_64(seed);
    }();
    return generator;
}

}  // namespace

Uuid Uuid::random() {
    std::mt19937_64& generator = threadGenerator();
    const std::uint64_t high = generator();
    const std::uint64_t low = generator();
    return fromRandomBits(high, low);
}

Uuid Uuid::fromRandomBits(std::uint64_t high, std::uint64_t low) {
    Uuid uuid;
    for (std::size_t index = 0; index < 8; ++index) {
        const auto shift = static_cast<unsigned>(56 - 8 * index);
        uuid.bytes[index] = static_cast<std::uint8_t>(high >> shift);
        uuid.bytes[index + 8] = static_cast<std::uint8_t>(low >> shift);
    }
    uuid.bytes[6] = static_cast<std::uint8_t>((uuid.bytes[6] & 0x0F) | 0x40);
    uuid.bytes[8] = static_cast<std::uint8_t>((uuid.bytes[8] & 0x3F) | 0x80);
    return uuid;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    if (text.size() != textLength) {
        return std::nullopt;
    }
    Uuid uuid;
    std::size_t nibble = 0;
    for (std::size_t position = 0; position < textLength; ++position) {
        if (isDashPosition(position)) {
            if (text[position] != '-') {
                return std::nullopt;
            }
            continue;
        }
        const int value = hexValue(text[position]);
        if (value < 0) {
            return std::nullopt;
        }
        std::uint8_t& byte = uuid.bytes[nibble / 2];
        byte = static_cast<std::uint8_t>(byte << 4 | value);
        ++nibble;
    }
    return uuid;
}

std::string Uuid::toString() const {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    text.reserve(textLength);
    for (const std::uint8_t byte : bytes) {
        if (isDashPosition(text.size())) {
            text += '-';
        }
        text += digits[byte >> 4];
        text += digits[byte & 0x0F];
    }
    return text;
}

}  // namespace velmora
