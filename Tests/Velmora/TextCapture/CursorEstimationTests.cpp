// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/CursorEstimation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace velmora {
namespace {

std::optional<long long> offsetAt(const std::string& text, double x, const Rect& bounds,
                                  std::optional<double> inset = std::nullopt, bool nearby = false) {
    return CursorEstimation::estimatedCharacterOffset(CharacterText(text), {x, 5}, bounds, inset,
                                                      nearby);
}

TEST(DirectCharacterHit, ToleratesTwoPointsBesideASmallRectangle) {
    const Rect rect{100, 100, 10, 10};
    EXPECT_TRUE(CursorEstimation::isDirectCharacterHit(rect, {98, 105}));
    EXPECT_FALSE(CursorEstimation::isDirectCharacterHit(rect, {97.5, 105}));
    EXPECT_TRUE(CursorEstimation::isDirectCharacterHit(rect, {111.9, 105}));
    EXPECT_FALSE(CursorEstimation::isDirectCharacterHit(rect, {112.5, 105}));
    EXPECT_TRUE(CursorEstimation::isDirectCharacterHit(rect, {105, 98}));
    EXPECT_FALSE(CursorEstimation::isDirectCharacterHit(rect, {105, 97.5}));
}

TEST(DirectCharacterHit, ToleratesFiveAndSixPointsBesideALargeOne) {
    const Rect rect{0, 0, 100, 100};
    EXPECT_TRUE(CursorEstimation::isDirectCharacterHit(rect, {-5, 50}));
    EXPECT_FALSE(CursorEstimation::isDirectCharacterHit(rect, {-5.1, 50}));
    EXPECT_TRUE(CursorEstimation::isDirectCharacterHit(rect, {50, -6}));
    EXPECT_FALSE(CursorEstimation::isDirectCharacterHit(rect, {50, -6.1}));
}

TEST(DirectCharacterHit, TakesAShareOfMiddlingSizes) {
    // 12 % of 30 is 3.6, 10 % of 40 is 4.
    const Rect rect{0, 0, 30, 40};
    EXPECT_TRUE(CursorEstimation::isDirectCharacterHit(rect, {-3.59, 20}));
    EXPECT_FALSE(CursorEstimation::isDirectCharacterHit(rect, {-3.61, 20}));
    EXPECT_TRUE(CursorEstimation::isDirectCharacterHit(rect, {15, -4}));
    EXPECT_FALSE(CursorEstimation::isDirectCharacterHit(rect, {15, -4.1}));
}

TEST(DirectCharacterHit, NeedsAnArea) {
    EXPECT_FALSE(CursorEstimation::isDirectCharacterHit({0, 0, 0, 10}, {0, 5}));
    EXPECT_FALSE(CursorEstimation::isDirectCharacterHit({0, 0, 10, 0}, {5, 0}));
    EXPECT_FALSE(CursorEstimation::isDirectCharacterHit({10, 0, -10, 10}, {5, 5}));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(CursorEstimation::isDirectCharacterHit({0, 0, nan, 10}, {5, 5}));
    EXPECT_FALSE(CursorEstimation::isDirectCharacterHit({0, 0, 10, 10}, {nan, 5}));
}

TEST(PlausibleCharacterBounds, AreAtMost150PointsWideAndHigh) {
    EXPECT_TRUE(CursorEstimation::isPlausibleCharacterBounds({0, 0, 150, 150}, {50, 50}));
    EXPECT_FALSE(CursorEstimation::isPlausibleCharacterBounds({0, 0, 150.5, 150}, {50, 50}));
    EXPECT_FALSE(CursorEstimation::isPlausibleCharacterBounds({0, 0, 150, 150.5}, {50, 50}));
    EXPECT_FALSE(CursorEstimation::isPlausibleCharacterBounds({0, 0, 0, 20}, {0, 10}));
}

TEST(PlausibleCharacterBounds, MustBeADirectHit) {
    EXPECT_FALSE(CursorEstimation::isPlausibleCharacterBounds({0, 0, 20, 20}, {25, 10}));
    EXPECT_TRUE(CursorEstimation::isPlausibleCharacterBounds({0, 0, 20, 20}, {22, 10}));
}

TEST(PlausibleWordBounds, AreAtMost150PointsWidePerCharacter) {
    const Rect rect{0, 0, 290, 30};
    EXPECT_TRUE(CursorEstimation::isPlausibleWordBounds(rect, 2, {10, 10}));
    EXPECT_FALSE(CursorEstimation::isPlausibleWordBounds(rect, 1, {10, 10}));
    EXPECT_TRUE(CursorEstimation::isPlausibleWordBounds({0, 0, 150, 150}, 0, {10, 10}));
    EXPECT_FALSE(CursorEstimation::isPlausibleWordBounds({0, 0, 300, 151}, 2, {10, 10}));
}

TEST(PlausibleWordBounds, MayMissThePointerBySixPoints) {
    const Rect rect{0, 0, 40, 20};
    EXPECT_TRUE(CursorEstimation::isPlausibleWordBounds(rect, 2, {-6, 10}));
    EXPECT_FALSE(CursorEstimation::isPlausibleWordBounds(rect, 2, {-6.5, 10}));
    EXPECT_TRUE(CursorEstimation::isPlausibleWordBounds(rect, 2, {45.5, 10}));
    EXPECT_FALSE(CursorEstimation::isPlausibleWordBounds(rect, 2, {46, 10}));
}

TEST(EstimatedOffset, SpreadsTheCharactersOverTheBand) {
    const Rect bounds{0, 0, 100, 10};
    EXPECT_EQ(offsetAt("一二三四", 8, bounds), 0);
    EXPECT_EQ(offsetAt("一二三四", 50, bounds), 2);
    EXPECT_EQ(offsetAt("一二三四", 95, bounds), 3);
    EXPECT_EQ(offsetAt("一二三四", 101, bounds), std::nullopt);
    EXPECT_EQ(offsetAt("一二三四", 0, bounds), 0) << "the band tolerates 8 points";
}

TEST(EstimatedOffset, CapsTheInset) {
    // 300 wide: inset 24, band 24…276, and 8 more on both sides.
    const Rect wide{0, 0, 300, 10};
    EXPECT_EQ(offsetAt("一二三四", 15.9, wide), std::nullopt);
    EXPECT_EQ(offsetAt("一二三四", 16, wide), 0);
    EXPECT_EQ(offsetAt("一二三四", 284, wide), 3);
    EXPECT_EQ(offsetAt("一二三四", 284.1, wide), std::nullopt);
    // 1000 wide: still 24, where 8 % would be 80.
    EXPECT_EQ(offsetAt("一二三四", 16, {0, 0, 1000, 10}), 0);
}

TEST(EstimatedOffset, RaisesTheInsetToEight) {
    // 40 wide: band 8…32, a cell is 6.
    const Rect narrow{0, 0, 40, 10};
    EXPECT_EQ(offsetAt("一二三四", 13.9, narrow), 0);
    EXPECT_EQ(offsetAt("一二三四", 14.1, narrow), 1);
    EXPECT_EQ(offsetAt("一二三四", 26.1, narrow), 3);
    // 10 wide: the band has a width of 1, from 8.
    EXPECT_EQ(offsetAt("一二三四", 8.3, {0, 0, 10, 10}), 1);
    EXPECT_EQ(offsetAt("一二三四", 9.5, {0, 0, 10, 10}), 3);
}

TEST(EstimatedOffset, TakesAGivenInsetAsItIs) {
    EXPECT_EQ(offsetAt("一二三四", 0, {0, 0, 100, 10}, 0.0), 0);
    EXPECT_EQ(offsetAt("一二三四", 24.9, {0, 0, 100, 10}, 0.0), 0);
    EXPECT_EQ(offsetAt("一二三四", 25, {0, 0, 100, 10}, 0.0), 1);
    EXPECT_EQ(offsetAt("一二三四", 50, {0, 0, 100, 10}, 40.0), 2);
}

TEST(EstimatedOffset, TruncatesAndStaysBelowTheEnd) {
    EXPECT_EQ(offsetAt("一二三", 99.9, {0, 0, 100, 10}, 0.0), 2);
    EXPECT_EQ(offsetAt("一二三", 33.0, {0, 0, 100, 10}, 0.0), 0);
    EXPECT_EQ(offsetAt("一二三", 34.0, {0, 0, 100, 10}, 0.0), 1);
}

TEST(EstimatedOffset, LooksNearbyOnlyWhenAllowed) {
    const Rect bounds{0, 0, 100, 10};
    EXPECT_EQ(offsetAt("ab中d", 30, bounds, 0.0, true), 2);
    EXPECT_EQ(offsetAt("ab中d", 30, bounds, 0.0, false), std::nullopt);
    EXPECT_EQ(offsetAt("中b中d", 30, bounds, 0.0, true), 0) << "the left neighbour wins";
    EXPECT_EQ(offsetAt("abcde中", 41, bounds, 0.0, true), 5) << "three to the right";
    EXPECT_EQ(offsetAt("abcdefg中", 40, bounds, 0.0, true), std::nullopt) << "four is too far";
    EXPECT_EQ(offsetAt("abc", 50, bounds, 0.0, true), std::nullopt);
}

TEST(EstimatedOffset, NeedsBoundsThatContainThePointAndAText) {
    const CharacterText text("一二");
    EXPECT_FALSE(CursorEstimation::estimatedCharacterOffset(text, {5, 5}, std::nullopt,
                                                            std::nullopt, false));
    EXPECT_FALSE(CursorEstimation::estimatedCharacterOffset(text, {5, 15}, Rect{0, 0, 10, 10},
                                                            std::nullopt, false));
    EXPECT_FALSE(CursorEstimation::estimatedCharacterOffset(text, {5, 5}, Rect{10, 0, -10, 10},
                                                            std::nullopt, false));
    EXPECT_FALSE(CursorEstimation::estimatedCharacterOffset(
        CharacterText(""), {5, 5}, Rect{0, 0, 10, 10}, std::nullopt, false));
}

TEST(EstimatedOffset, CountsCharactersNotCodePoints) {
    // A flag is one character of four UTF-16 units; with a variation selector a hanzi stays one.
    EXPECT_EQ(offsetAt("\U0001F1E8\U0001F1F3中\uFE00文", 99, {0, 0, 100, 10}, 0.0), 2);
    EXPECT_EQ(offsetAt("\U0001F1E8\U0001F1F3中\uFE00文", 50, {0, 0, 100, 10}, 0.0), 1);
}

TEST(EstimatedRect, IsOneCellOfTheBand) {
    const CharacterText text("一二三四");
    EXPECT_EQ(CursorEstimation::estimatedCharacterRect({10, 20, 100, 30}, text, 1, 0.0),
              (Rect{35, 20, 25, 30}));
    EXPECT_EQ(CursorEstimation::estimatedCharacterRect({10, 20, 100, 30}, text, 1, std::nullopt),
              (Rect{10 + 8 + 21, 20, 21, 30}));
}

TEST(EstimatedRect, NeedsACharacterOfTheTextAndAnArea) {
    const CharacterText text("一二三四");
    EXPECT_FALSE(CursorEstimation::estimatedCharacterRect({0, 0, 100, 30}, text, 4, 0.0));
    EXPECT_FALSE(CursorEstimation::estimatedCharacterRect({0, 0, 100, 30}, text, -1, 0.0));
    EXPECT_FALSE(CursorEstimation::estimatedCharacterRect({0, 0, 0, 30}, text, 0, 0.0));
    EXPECT_FALSE(CursorEstimation::estimatedCharacterRect({0, 0, 100, 0}, text, 0, 0.0));
    EXPECT_FALSE(
        CursorEstimation::estimatedCharacterRect({0, 0, 100, 30}, CharacterText(""), 0, 0.0));
}

TEST(WholeValueEstimate, IsForASingleShortLine) {
    const CharacterText text("中文");
    EXPECT_TRUE(CursorEstimation::canEstimateWholeValueHit({0, 0, 420, 90}, text));
    EXPECT_FALSE(CursorEstimation::canEstimateWholeValueHit({0, 0, 420.5, 90}, text));
    EXPECT_FALSE(CursorEstimation::canEstimateWholeValueHit({0, 0, 420, 90.5}, text));
    for (const char* lineBreak : {"\n", "\v", "\f", "\r", "\r\n", "\u0085", "\u2028", "\u2029"}) {
        EXPECT_FALSE(CursorEstimation::canEstimateWholeValueHit(
            {0, 0, 10, 10}, CharacterText(std::string("中") + lineBreak + "文")));
    }
    EXPECT_TRUE(
        CursorEstimation::canEstimateWholeValueHit({0, 0, 10, 10}, CharacterText("中\t\u2027文")));
}

TEST(ChineseCharacterCount, CountsTheTwoRanges) {
    EXPECT_EQ(CursorEstimation::chineseCharacterCount(CharacterText("a中1文，\u3400\u9FFF\u3007")),
              4);
    EXPECT_EQ(CursorEstimation::chineseCharacterCount(CharacterText("")), 0);
}

TEST(ChineseCharacter, IsOneOfTheTwoRangesOnly) {
    EXPECT_TRUE(isChinese("\u3400"));
    EXPECT_TRUE(isChinese("\u4DBF"));
    EXPECT_TRUE(isChinese("\u4E00"));
    EXPECT_TRUE(isChinese("\u9FFF"));
    EXPECT_FALSE(isChinese("\u33FF"));
    EXPECT_FALSE(isChinese("\u4DC0"));
    EXPECT_FALSE(isChinese("\uA000"));
    EXPECT_FALSE(isChinese("\u3007"));
    EXPECT_FALSE(isChinese("\uFF0C"));
    EXPECT_FALSE(isChinese("\uF900"));
    EXPECT_FALSE(isChinese("\U00020000"));
    EXPECT_FALSE(isChinese("A"));
}

}  // namespace
}  // namespace velmora
