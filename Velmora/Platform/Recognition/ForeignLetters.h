// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

namespace velmora {

/// Letters of the scripts that are written in cells like those of Chinese characters: kana, and so
/// many hangul syllables that every other one is like one of them. Their forms stand beside those
/// of Chinese characters, so that ink which is theirs is not taken for Chinese. Kana that look like
/// a Chinese character are left out. Sorted.
std::vector<char32_t> foreignLetters();

/// Chinese characters and foreign letters, sorted, each once.
std::vector<char32_t> withForeignLetters(std::vector<char32_t> characters);

}  // namespace velmora
