// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/CharacterCertainty.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

PlacedCharacter known(float exact, float margin, bool agreed) {
    PlacedCharacter character{"中", 0.9F, {0, 20}};
    character.exact = exact;
    character.margin = margin;
    character.fit = 0.95F;
    character.agreed = agreed;
    return character;
}

TEST(CharacterCertainty, GrowsWithWhatSpeaksForTheCharacter) {
    const float base = certaintyOf(known(0.8F, 0.02F, false), false);
    EXPECT_GT(certaintyOf(known(0.95F, 0.02F, false), false), base);
    EXPECT_GT(certaintyOf(known(0.8F, 0.1F, false), false), base);
    EXPECT_GT(certaintyOf(known(0.8F, 0.02F, true), false), base);
    EXPECT_GT(certaintyOf(known(0.8F, 0.02F, false), true), base);
}

TEST(CharacterCertainty, TellsTheSureFromTheGuessed) {
    EXPECT_GT(certaintyOf(known(0.99F, 0.25F, true), true), 0.99F);
    EXPECT_LT(certaintyOf(known(0.3F, 0.005F, false), false), 0.2F);
}

TEST(CharacterCertainty, AMarginBeyondMeasureSaysNoMore) {
    EXPECT_EQ(certaintyOf(known(0.9F, 0.5F, true), false),
              certaintyOf(known(0.9F, 5, true), false));
}

TEST(CharacterCertainty, WhatIsFarFromItsLineIsNoneOfTheCharacters) {
    EXPECT_GT(certaintyOf(known(0.80F, 0.3F, false), true), 0.9F);
    EXPECT_LT(certaintyOf(known(0.74F, 0.3F, false), true), 0.3F) << "however bad all others are";
    EXPECT_GT(certaintyOf(known(0.74F, 0.3F, true), true), 0.9F) << "the reader says the same";
    EXPECT_LT(certaintyOf(known(0.70F, 0.3F, true), true), 0.3F) << "too far to believe it";
}

TEST(CharacterCertainty, InkThatIsLikeNothingIsNoCharacterInAnyFont) {
    PlacedCharacter character = known(0.4F, 0.3F, true);
    character.fit = 0.4F;
    EXPECT_LT(certaintyOf(character, true), 0.3F);
    character.exact = character.fit = 0.6F;
    EXPECT_GT(certaintyOf(character, true), 0.9F);
}

}  // namespace
}  // namespace velmora
