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

}  // namespace

float certaintyOf(const PlacedCharacter& character, bool inWord) {
    const float sum = constant + reader * character.confidence + exact * character.exact +
                      margin * std::min(character.margin, greatestMargin) +
                      fontFit * character.fit + (character.agreed ? agreed : 0) +
                      (inWord ? withinWord : 0) +
                      beyondFit * std::max(0.0F, character.fit - character.exact);
    return 1 / (1 + std::exp(-sum));
}

}  // namespace velmora
