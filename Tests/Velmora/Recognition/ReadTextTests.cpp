// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/ReadText.h"

#include <gtest/gtest.h>

#include "Tests/Velmora/Recognition/Drawing.h"
#include "Velmora/Platform/Recognition/CharacterShape.h"
#include "Velmora/Platform/Recognition/CodePoint.h"
#include "Velmora/Platform/Recognition/WordPatterns.h"

namespace velmora {
namespace {

PlacedLine line() {
    return {
        {"中", 0.9F, {10, 30}, true}, {"文", 0.9F, {30, 50}, true}, {"。", 0.9F, {50, 50}, true}};
}

TEST(ReadText, BoxesAreNormalisedFromTheBottomLeft) {
    const ReadText text(line(), 0.99F, {10, 20, 60, 40}, 100, 200);
    EXPECT_EQ(text.string(), "中文。");
    const auto box = text.boundingBox(0, 1);
    ASSERT_TRUE(box);
    EXPECT_DOUBLE_EQ(box->x, 0.1);
    EXPECT_DOUBLE_EQ(box->width, 0.2);
    EXPECT_DOUBLE_EQ(box->y, 0.8);
    EXPECT_DOUBLE_EQ(box->height, 0.1);
    EXPECT_DOUBLE_EQ(text.boundingBox(0, 3)->width, 0.4);
}

TEST(ReadText, HasNoBoxForEmptyRangesOutsideOrWithoutInk) {
    const ReadText text(line(), 0.99F, {10, 20, 60, 40}, 100, 200);
    EXPECT_FALSE(text.boundingBox(1, 1));
    EXPECT_FALSE(text.boundingBox(0, 4));
    EXPECT_FALSE(text.boundingBox(3, 9));
    EXPECT_FALSE(text.boundingBox(2, 3));
}

TEST(ReadText, AMarkJoinsTheCharacterBeforeIt) {
    const ReadText text({{"e", 0.9F, {0, 10}, true},
                         {"\xCC\x81", 0.9F, {10, 12}, true},
                         {"中", 0.9F, {12, 30}, true}},
                        0.5F, {0, 0, 30, 20}, 30, 20);
    ASSERT_TRUE(text.boundingBox(1, 2));
    EXPECT_DOUBLE_EQ(text.boundingBox(1, 2)->x, 12.0 / 30);
    EXPECT_FALSE(text.boundingBox(2, 3));
}

TEST(PlacedCharacter, TheCellUnderAPointComesBeforeItsNeighbours) {
    EXPECT_EQ(characterAt(line(), 29, 5), 0);
    EXPECT_EQ(characterAt(line(), 30, 5), 1);
    EXPECT_EQ(characterAt(line(), 7, 5), 0);
    EXPECT_EQ(characterAt(line(), 2, 5), -1);
    EXPECT_EQ(characterAt({}, 2, 5), -1);
}

TEST(CodePoint, ReadsAndWritesUtf8) {
    for (const char32_t point : {U'a', U'é', U'中', U'𠀀'}) {
        EXPECT_EQ(firstCodePoint(utf8Of(point)), point);
    }
    EXPECT_EQ(codePointsOf("a中𠀀"), U"a中𠀀");
    EXPECT_EQ(codePointsOf("\xFF"
                           "a\xE4"),
              U"\xFFFD"
              U"a\xFFFD");
    EXPECT_EQ(firstCodePoint(""), U'\0');
}

TEST(WordPatterns, KnowWhatCompletesAWord) {
    WordPatterns words;
    for (const char* word : {"肉毒桿菌", "夜盲", "夜市", "a中", "中"}) {
        words.add(word);
    }
    words.finish();
    EXPECT_EQ(words.completions(U"肉壽桿菌", 1), std::vector<char32_t>{U'毒'});
    EXPECT_EQ(words.completions(U"夜言", 1).size(), 2U);
    EXPECT_TRUE(words.completions(U"夜言", 0).empty());
    EXPECT_TRUE(words.contains(U"夜盲"));
    EXPECT_FALSE(words.contains(U"夜言"));
    EXPECT_FALSE(words.contains(U"中"));
    EXPECT_FALSE(words.contains(U""));
}

TEST(CharacterShape, IsTheSameAtAnySizeAndPlaceAndUnlikeOthers) {
    GrayImage small(30, 30, 255);
    drawCharacter(small, 3, 5, 20, 0);
    GrayImage large(80, 80, 255);
    drawCharacter(large, 20, 10, 48, 0);
    GrayImage box(80, 80, 255);
    drawFrame(box, {10, 10, 60, 60}, 6, 0);
    const auto one = CharacterShape::of(small);
    const auto other = CharacterShape::of(large);
    const auto frame = CharacterShape::of(box);
    ASSERT_TRUE(one && other && frame);
    EXPECT_NEAR(one->similarity(*one), 1, 1e-5);
    EXPECT_GT(one->similarity(*other), 0.8);
    EXPECT_LT(one->similarity(*frame), 0.5);
    EXPECT_FALSE(CharacterShape::of(GrayImage(10, 10, 255)));
    EXPECT_FALSE(CharacterShape::of(GrayImage()));
}

}  // namespace
}  // namespace velmora
