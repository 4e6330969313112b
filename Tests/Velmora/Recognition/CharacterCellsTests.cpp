// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/CharacterCells.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

/// The ink columns of characters of this width, two empty columns after each.
std::vector<int> columnsOf(int count, int em) {
    std::vector<int> columns;
    for (int i = 0; i < count; ++i) {
        for (int x = 0; x < em; ++x) {
            columns.push_back(x < em - 2 ? 6 : 0);
        }
    }
    return columns;
}

LineReading readingOf(const std::vector<std::string>& characters, double em, double shift) {
    LineReading reading;
    for (std::size_t i = 0; i < characters.size(); ++i) {
        const double left = static_cast<double>(i) * em + shift;
        reading.push_back({characters[i], 0.95F, left, left + em});
    }
    return reading;
}

TEST(CharacterCells, StandOnTheInkEvenIfTheReaderIsHalfAnEmOff) {
    for (const double shift : {-9.0, 0.0, 9.0}) {
        const FittedCells fitted =
            fitCells(readingOf({"今", "天", "天", "气", "好"}, 20, shift), columnsOf(5, 20), 18);
        ASSERT_EQ(fitted.cells.size(), 5U);
        for (int i = 0; i < 5; ++i) {
            EXPECT_NEAR(fitted.cells[static_cast<std::size_t>(i)].middle(), i * 20 + 9.5, 2.5)
                << "shift " << shift;
        }
    }
}

TEST(CharacterCells, GiveNarrowCharactersNarrowCells) {
    std::vector<int> columns = columnsOf(2, 20);
    for (int digit = 0; digit < 3; ++digit) {
        for (int x = 0; x < 10; ++x) {
            columns.push_back(x < 8 ? 5 : 0);
        }
    }
    LineReading reading{{"共", 0.9F, 0, 20},
                        {"有", 0.9F, 20, 40},
                        {"1", 0.9F, 40, 50},
                        {"2", 0.9F, 50, 60},
                        {"8", 0.9F, 60, 70}};
    const FittedCells fitted = fitCells(reading, columns, 18);
    EXPECT_NEAR(fitted.cells[1].middle(), 29.5, 2.5);
    EXPECT_NEAR(fitted.cells[2].middle(), 44.5, 2.5);
    EXPECT_NEAR(fitted.cells[4].middle(), 64.5, 2.5);
}

TEST(CharacterCells, LeaveACharacterThatIsNotThereWithoutACell) {
    const LineReading reading{{"今", 0.95F, 0, 20}, {"一", 0.3F, 18, 22}, {"天", 0.95F, 20, 40}};
    const FittedCells fitted = fitCells(reading, columnsOf(2, 20), 18);
    EXPECT_EQ(fitted.cells[1].width(), 0);
    EXPECT_NEAR(fitted.cells[0].middle(), 9.5, 2.5);
    EXPECT_NEAR(fitted.cells[2].middle(), 29.5, 2.5);
}

TEST(CharacterCells, AreOrderedAndInsideTheLine) {
    const FittedCells fitted =
        fitCells(readingOf({"a", "中", "，", "文", "b", "。"}, 15, 4), columnsOf(5, 19), 17);
    int last = 0;
    for (const CharacterCell& cell : fitted.cells) {
        EXPECT_GE(cell.left, last);
        EXPECT_GE(cell.right, cell.left);
        last = cell.right;
    }
    EXPECT_LE(last, 95);
}

TEST(CharacterCells, SurviveNothing) {
    EXPECT_TRUE(fitCells({}, {1, 2}, 10).cells.empty());
    EXPECT_EQ(fitCells({{"中", 1, 0, 1}}, {}, 10).cells.size(), 1U);
    EXPECT_EQ(fitCells({{"中", 1, 0, 1}}, {3}, 1).cells.size(), 1U);
    EXPECT_TRUE(guessCells({}, 10).empty());
    EXPECT_TRUE(guessCells({1, 2}, 0).empty());
}

TEST(CharacterCells, AreGuessedFromTheGapsAlone) {
    const std::vector<CharacterCell> cells = guessCells(columnsOf(6, 20), 18);
    ASSERT_EQ(cells.size(), 6U);
    for (int i = 0; i < 6; ++i) {
        EXPECT_NEAR(cells[static_cast<std::size_t>(i)].middle(), i * 20 + 9.5, 2.5);
    }
}

}  // namespace
}  // namespace velmora
