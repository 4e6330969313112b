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

TEST(CharacterGrid, ThePitchOfWhatIsCertainIsNotThatOfWhatWasReadTooOften) {
    const PlacedLine line{placed("很", 80, 96),   placed("費", 96, 110),  placed("和", 110, 121),
                          placed("宦", 121, 129), placed("合", 129, 143), placed("出", 144, 160),
                          placed("去", 160, 176)};
    const std::vector<bool> certain{true, false, false, false, false, true, true};
    EXPECT_LT(pitchOf(line), 15.9);
    EXPECT_EQ(pitchOfCertain(line, certain, 14.5), 16);
    EXPECT_EQ(pitchOfCertain(line, std::vector<bool>(7, false), 14.5), 14.5);
    // Their cells are off, as those of their neighbours may be; three characters stand there.
    const std::vector<CharacterCell> cells =
        cellsOnGrid(line, certain, ReadingWindow{0, 7, 1, PixelBox{80, 0, 176, 16}}, 14.5);
    ASSERT_EQ(cells.size(), 3U);
    EXPECT_NEAR(cells[0].middle(), 104, 1);
    EXPECT_NEAR(cells[1].middle(), 120, 1);
    EXPECT_NEAR(cells[2].middle(), 136, 1);
    // A gap between words is no pitch.
    EXPECT_EQ(pitchOfCertain({placed("很", 0, 16), placed("好", 48, 64)}, {true, true}, 15), 15);
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

TEST(CharacterGrid, NeighboursOfAReplacedCharacterReachToItsCell) {
    PlacedLine line{placed("很", 80, 93), placed("費", 93, 105), placed("和", 105, 114),
                    placed("合", 115, 128), placed("出", 140, 156)};
    replaceWithin(line, placed("好", 96, 112));
    ASSERT_EQ(line.size(), 4U);
    EXPECT_EQ(line[0].cell.right, 96);
    EXPECT_EQ(line[2].cell.left, 112);
    // Nothing reaches over a gap.
    replaceWithin(line, placed("去", 168, 184));
    EXPECT_EQ(line[3].cell.right, 156);
}

}  // namespace
}  // namespace velmora
