// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/CharacterCertainty.h"

#include <algorithm>
#include <cmath>

namespace velmora {

namespace {

// As fit_confidence.py prints them.
constexpr float constant = -2.473F;
constexpr float reader = -0.486F;
constexpr float exact = 1.534F;
constexpr float margin = 19.372F;
constexpr float fontFit = -0.119F;
constexpr float agreed = 4.120F;
constexpr float withinWord = 3.978F;
constexpr float beyondFit = -2.725F;
constexpr float greatestMargin = 0.3F;  ///< More says no more.

constexpr float knownFont = 0.85F;
constexpr float farBelowFit = 0.2F;
constexpr float wellKnownFont = 0.95F;
constexpr float tooFarBelowFit = 0.22F;
constexpr float leastExact = 0.45F;  ///< Less is nothing like the character, in any font.
constexpr float noneOfThem = 0.1F;

/// In a font that is known, the right character fits about as well as the others of its line. What
/// is far from that and is not read either is something else, such as a letter of another script
/// or a character that no word has, however much worse the other characters are. Where the font is
/// known well, the reader does not count either.
bool isNoneOfThem(const PlacedCharacter& character) {
    const float below = character.fit - character.exact;
    return character.exact < leastExact ||
           (!character.agreed && character.fit >= knownFont && below > farBelowFit) ||
           (character.fit >= wellKnownFont && below > tooFarBelowFit);
}

}  // namespace

float certaintyOf(const PlacedCharacter& character, bool inWord) {
    if (isNoneOfThem(character)) {
        return noneOfThem;
    }
    const float sum = constant + reader * character.confidence + exact * character.exact +
                      margin * std::min(character.margin, greatestMargin) +
                      fontFit * character.fit + (character.agreed ? agreed : 0) +
                      (inWord ? withinWord : 0) +
                      beyondFit * std::max(0.0F, character.fit - character.exact);
    return 1 / (1 + std::exp(-sum));
}

}  // namespace velmora
