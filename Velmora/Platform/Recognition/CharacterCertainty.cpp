// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/CharacterCertainty.h"

#include <algorithm>
#include <cmath>

namespace velmora {

namespace {

// As fit_confidence.py prints them.
constexpr float constant = -3.456F;
constexpr float lead = 1.109F;
constexpr float exact = 2.597F;
constexpr float fontFit = 0.230F;
constexpr float agreed = 0.758F;
constexpr float withinWord = 0.921F;
constexpr float beyondFit = -1.898F;
constexpr float greatestLead = 7;  ///< More says no more.

constexpr float knownFont = 0.85F;
constexpr float farBelowFit = 0.2F;
constexpr float wellKnownFont = 0.95F;
constexpr float tooFarBelowFit = 0.22F;
constexpr float leastExact = 0.45F;  ///< Less is nothing like the character, in any font.
constexpr float noneOfThem = 0.1F;
constexpr float unmistakable = 0.985F;  ///< Strokes that run so much like it are its own.

/// In a font that is known, the right character fits about as well as the others of its line. What
/// is far from that and is not read either is something else, such as a letter of another script
/// or a character that no word has, however much worse the other characters are. Where the font is
/// known well, the reader does not count either. A single stroke is another matter: pixel by pixel
/// it is nothing like itself once it is drawn half a pixel higher.
bool isNoneOfThem(const PlacedCharacter& character) {
    if (character.agreed && character.shape >= unmistakable) {
        return false;
    }
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
    const float sum = constant + lead * std::min(character.lead, greatestLead) +
                      exact * character.exact + fontFit * character.fit +
                      (character.agreed ? agreed : 0) + (inWord ? withinWord : 0) +
                      beyondFit * std::max(0.0F, character.fit - character.exact);
    return 1 / (1 + std::exp(-sum));
}

}  // namespace velmora
