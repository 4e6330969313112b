// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/CharacterCertainty.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

PlacedCharacter known(float exact, float lead, bool agreed) {
    PlacedCharacter character{"中", 0.9F, {0, 20}};
    character.exact = exact;
    character.lead = lead;
    character.fit = 0.95F;
    character.agreed = agreed;
    return character;
}

TEST(CharacterCertainty, GrowsWithWhatSpeaksForTheCharacter) {
    const float base = certaintyOf(known(0.8F, 1, false), false);
    EXPECT_GT(certaintyOf(known(0.8F, 3, false), false), base);
    EXPECT_GT(certaintyOf(known(0.8F, 1, true), false), base);
    EXPECT_GT(certaintyOf(known(0.8F, 1, false), true), base);
}

TEST(CharacterCertainty, TellsTheSureFromTheGuessed) {
    EXPECT_GT(certaintyOf(known(0.99F, 7, true), true), 0.99F);
    EXPECT_LT(certaintyOf(known(0.3F, -1, false), false), 0.2F);
}

TEST(CharacterCertainty, ALeadBeyondMeasureSaysNoMore) {
    EXPECT_EQ(certaintyOf(known(0.9F, 8, true), false), certaintyOf(known(0.9F, 12, true), false));
}

TEST(CharacterCertainty, ASingleStrokeMayLieBetweenThePixels) {
    PlacedCharacter stroke = known(0.43F, 7, true);
    EXPECT_LT(certaintyOf(stroke, true), 0.3F);
    stroke.shape = 0.99F;
    EXPECT_GT(certaintyOf(stroke, true), 0.9F);
    stroke.agreed = false;
    EXPECT_LT(certaintyOf(stroke, true), 0.3F) << "the reader must say the same";
}

TEST(CharacterCertainty, WhatIsFarFromItsLineIsNoneOfTheCharacters) {
    EXPECT_GT(certaintyOf(known(0.80F, 7, false), true), 0.9F);
    EXPECT_LT(certaintyOf(known(0.74F, 7, false), true), 0.3F) << "however bad all others are";
    EXPECT_GT(certaintyOf(known(0.74F, 7, true), true), 0.9F) << "the reader says the same";
    EXPECT_LT(certaintyOf(known(0.70F, 7, true), true), 0.3F) << "too far to believe it";
}

TEST(CharacterCertainty, InkThatIsLikeNothingIsNoCharacterInAnyFont) {
    PlacedCharacter character = known(0.4F, 7, true);
    character.fit = 0.4F;
    EXPECT_LT(certaintyOf(character, true), 0.3F);
    character.exact = character.fit = 0.6F;
    EXPECT_GT(certaintyOf(character, true), 0.9F);
}

}  // namespace
}  // namespace velmora
