// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/OptionSupport.h"

#include <algorithm>

namespace velmora {

namespace {

// As fit_confidence.py prints them, but for the words: what it is fitted on consists of words of
// the list more than what people read does, so they count for three quarters of that.
constexpr float exact = 22.8F;
constexpr float exactOverNoise = 11.7F;
constexpr float shape = 6.58F;
constexpr float read = 2.12F;
constexpr float readInStrangeFont = 1.17F;
constexpr float vote = 1.85F;
constexpr float wordOfTwo = 2.1F;
constexpr float wordOfThree = 3.35F;
constexpr float longerWord = 4.17F;

constexpr float knownFont = 0.85F;
constexpr float leastNoise = 0.03F;  ///< No two drawings of a character are quite the same.
constexpr float usualNoise = 0.1F;

}  // namespace

float supportOf(const CharacterOption& option, float fontFit) {
    const float noise = leastNoise + std::max(0.0F, 1 - fontFit);
    return exact * option.exact + exactOverNoise * option.exact * usualNoise / noise +
           shape * option.shape +
           (read + (fontFit < knownFont ? readInStrangeFont : 0)) * option.read +
           vote * option.votes;
}

float supportOfWord(std::size_t length) {
    if (length < 2) {
        return 0;
    }
    return length == 2 ? wordOfTwo : length == 3 ? wordOfThree : longerWord;
}

}  // namespace velmora
