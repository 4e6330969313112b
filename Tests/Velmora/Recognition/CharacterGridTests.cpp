// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/CharacterGrid.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

PlacedCharacter placed(const char* text, int left, int right) {
    return {text, 0.9F, {left, right}};
}

ReadingWindow windowOf(const PlacedLine& line, int left, int right) {
    return {0, line.size(), 0, {left, 0, right, 20}};
}

TEST(CharacterGrid, ThePitchIsThatOfNeighbours) {
    EXPECT_NEAR(pitchOf({placed("我", 0, 20), placed("们", 20, 40), placed("好", 41, 61)}), 20.5,
                0.01);
    EXPECT_EQ(pitchOf({placed("我", 0, 20), placed(",", 20, 26), placed("好", 40, 62)}), 22);
    EXPECT_EQ(pitchOf({placed("a", 0, 10)}), 0);
    EXPECT_EQ(pitchOf({}), 0);
}

TEST(CharacterGrid, FindsACharacterThatWasLeftOut) {
    const PlacedLine line{placed("我", 0, 20), placed("好", 40, 60)};
    EXPECT_EQ(cellsOnGrid(line, {true, true}, windowOf(line, 0, 60), 20),
              (std::vector<CharacterCell>{{20, 40}}));
}

TEST(CharacterGrid, FindsTheCharacterThatWasReadAsTwo) {
    const PlacedLine line{placed("我", 0, 20), placed("木", 20, 29), placed("木", 30, 40),
                          placed("好", 40, 60)};
    EXPECT_EQ(cellsOnGrid(line, {true, false, false, true}, windowOf(line, 0, 60), 20),
              (std::vector<CharacterCell>{{20, 40}}));
}

TEST(CharacterGrid, LeavesAlonePunctuationThatFits) {
    const PlacedLine line{placed("我", 0, 20), placed("，", 20, 40), placed("好", 40, 60)};
    EXPECT_TRUE(cellsOnGrid(line, {true, false, true}, windowOf(line, 0, 60), 20).empty());
}

TEST(CharacterGrid, LeavesAloneWhatIsNotOnIt) {
    const PlacedLine line{placed("我", 0, 20), placed("i", 20, 28), placed("好", 28, 48)};
    EXPECT_TRUE(cellsOnGrid(line, {true, false, true}, windowOf(line, 0, 48), 20).empty());
}

TEST(CharacterGrid, GoesOnToTheEndsOfTheLine) {
    const PlacedLine line{placed("，", 0, 20), placed("我", 20, 40), placed("州", 40, 55),
                          placed("。", 55, 60)};
    EXPECT_EQ(cellsOnGrid(line, {false, true, false, false}, windowOf(line, 0, 60), 20),
              (std::vector<CharacterCell>{{0, 20}, {40, 60}}));
}

TEST(CharacterGrid, NothingWhereNothingIsCertain) {
    const PlacedLine line{placed("我", 0, 20), placed("好", 40, 60)};
    EXPECT_TRUE(cellsOnGrid(line, {false, false}, windowOf(line, 0, 60), 20).empty());
    EXPECT_TRUE(cellsOnGrid(line, {true, true}, windowOf(line, 0, 60), 0).empty());
}

TEST(CharacterGrid, ACharacterTakesThePlaceOfAllInItsCell) {
    PlacedLine line{placed("我", 0, 20), placed("州", 20, 34), placed("。", 34, 40),
                    placed("好", 40, 60)};
    replaceWithin(line, placed("川", 20, 40));
    EXPECT_EQ(textOf(line), "我川好");
    replaceWithin(line, placed("们", 60, 80));
    EXPECT_EQ(textOf(line), "我川好们");
}

}  // namespace
}  // namespace velmora
