// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <optional>

namespace velmora {

/// The tone of one Mandarin syllable. The raw value is the tone number, with 0 for the neutral
/// tone.
enum class PinyinTone : int { neutral = 0, first = 1, second = 2, third = 3, fourth = 4 };

/// Every tone, in the order of the raw values.
inline constexpr std::array<PinyinTone, 5> allPinyinTones{PinyinTone::neutral, PinyinTone::first,
                                                          PinyinTone::second, PinyinTone::third,
                                                          PinyinTone::fourth};

/// The tone with this raw value; nothing unless it is 0 to 4. The digit 5, which numbered pinyin
/// writes for the neutral tone, is the converter's business and no raw value.
constexpr std::optional<PinyinTone> pinyinToneFromRawValue(long long rawValue) {
    if (rawValue < 0 || rawValue > 4) {
        return std::nullopt;
    }
    return static_cast<PinyinTone>(rawValue);
}

}  // namespace velmora
