// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/OCRCharacterHit.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "Tests/Support/TextCapture/FakeText.h"
#include "Tests/Support/TextCapture/GenerousText.h"
#include "Velmora/TextCapture/CursorEstimation.h"

namespace velmora {
namespace {

// A power of two, so that boxes survive being normalised to the last bit.
constexpr Size imageSize{1024, 256};

using Boxes = std::vector<std::optional<Rect>>;

std::optional<OCRCharacterHit> hit(const std::string& text, const Boxes& boxes, Point point,
                                   const std::string& displayText) {
    return OCRCharacterHit::cursorCharacterHit(FakeText(text, 1, boxes, imageSize), displayText, {},
                                               point, imageSize);
}

std::optional<OCRCharacterHit> hit(const std::string& text, const Boxes& boxes, Point point) {
    return hit(text, boxes, point, text);
}

TEST(CharacterImageRect, TurnsNormalisedBoxesIntoPixels) {
    const FakeText text("中文", 1, {Rect{100, 40, 20, 24}, std::nullopt}, imageSize);
    const CharacterText own("中文");
    EXPECT_EQ(OCRCharacterHit::characterImageRect(text, own, 0, imageSize),
              (Rect{100, 40, 20, 24}));
    EXPECT_EQ(OCRCharacterHit::characterImageRect(text, own, 0, {2048, 512}),
              (Rect{200, 80, 40, 48}));
    EXPECT_FALSE(OCRCharacterHit::characterImageRect(text, own, 1, imageSize));
    EXPECT_FALSE(OCRCharacterHit::characterImageRect(text, own, 2, imageSize)) << "an empty range";
    EXPECT_FALSE(OCRCharacterHit::characterImageRect(text, own, 3, imageSize));
    EXPECT_FALSE(OCRCharacterHit::characterImageRect(text, own, -1, imageSize));
}

TEST(CharacterImageRect, AsksForNoCharacterThatIsNotThere) {
    const GenerousText text("中文", {0.25, 0.25, 0.5, 0.5});
    const CharacterText own("中文");
    EXPECT_TRUE(OCRCharacterHit::characterImageRect(text, own, 1, imageSize));
    EXPECT_TRUE(OCRCharacterHit::characterImageRect(text, own, 2, imageSize)) << "its end";
    EXPECT_FALSE(OCRCharacterHit::characterImageRect(text, own, 3, imageSize));
    EXPECT_FALSE(OCRCharacterHit::characterImageRect(text, own, -1, imageSize));
}

TEST(CharacterImageRect, RefusesBoxesThatAreNotFinite) {
    const FakeText text("中", 1, {Rect{std::numeric_limits<double>::quiet_NaN(), 40, 20, 24}},
                        imageSize);
    EXPECT_FALSE(OCRCharacterHit::characterImageRect(text, CharacterText("中"), 0, imageSize));
}

TEST(CharacterHit, ReachesBeyondSmallBoxes) {
    // 20 × 20 around (110, 110): reach 15.6 to the sides, 16 up and down.
    const Boxes boxes{Rect{100, 100, 20, 20}};
    EXPECT_EQ(hit("中", boxes, {125, 110}), (OCRCharacterHit{0, {100, 100, 20, 20}}));
    EXPECT_TRUE(hit("中", boxes, {125.59, 110}));
    EXPECT_FALSE(hit("中", boxes, {125.7, 110}));
    EXPECT_FALSE(hit("中", boxes, {126, 110}));
    EXPECT_TRUE(hit("中", boxes, {110, 126}));
    EXPECT_FALSE(hit("中", boxes, {110, 126.1}));
    EXPECT_TRUE(hit("中", boxes, {94.5, 110}));
}

TEST(CharacterHit, ReachesTwelveAndFourteenBeyondLargeBoxes) {
    const Boxes boxes{Rect{100, 50, 100, 100}};
    EXPECT_TRUE(hit("中", boxes, {212, 100}));
    EXPECT_FALSE(hit("中", boxes, {212.1, 100}));
    EXPECT_TRUE(hit("中", boxes, {150, 164}));
    EXPECT_FALSE(hit("中", boxes, {150, 164.1}));
}

TEST(CharacterHit, ReachesItsShareBeyondMiddlingBoxes) {
    // 28 % of 40 and 30 % of 32: 11.2 and 9.6.
    const Boxes boxes{Rect{100, 100, 40, 32}};
    EXPECT_TRUE(hit("中", boxes, {120 + 31.1, 116}));
    EXPECT_FALSE(hit("中", boxes, {120 + 31.3, 116}));
    EXPECT_TRUE(hit("中", boxes, {120, 116 - 25.5}));
    EXPECT_FALSE(hit("中", boxes, {120, 116 - 25.7}));
}

TEST(CharacterHit, ReachesFiveAndSixBeyondTinyBoxes) {
    const Boxes boxes{Rect{100, 100, 4, 4}};
    EXPECT_TRUE(hit("中", boxes, {109, 102}));
    EXPECT_FALSE(hit("中", boxes, {109.1, 102}));
    EXPECT_TRUE(hit("中", boxes, {102, 110}));
    EXPECT_FALSE(hit("中", boxes, {102, 110.1}));
}

TEST(CharacterHit, MissesInTheCornerOfTheReach) {
    // Inside both reaches, but further than 1 in all.
    EXPECT_FALSE(hit("中", {Rect{100, 100, 20, 20}}, {122, 122}));
    EXPECT_TRUE(hit("中", {Rect{100, 100, 20, 20}}, {120, 120}));
}

TEST(CharacterHit, TakesTheNearestAndTheEarlierOfEquals) {
    const Boxes boxes{Rect{100, 100, 20, 20}, Rect{120, 100, 20, 20}, Rect{140, 100, 20, 20}};
    EXPECT_EQ(hit("一二三", boxes, {118, 110})->offset, 0);
    EXPECT_EQ(hit("一二三", boxes, {122, 110})->offset, 1);
    EXPECT_EQ(hit("一二三", boxes, {120, 110})->offset, 0);
    EXPECT_EQ(hit("一二三", boxes, {140, 110})->offset, 1);
}

TEST(CharacterHit, NeverTakesOtherCharacters) {
    const Boxes boxes{Rect{100, 100, 20, 20}, Rect{120, 100, 20, 20}};
    EXPECT_FALSE(hit("a1", boxes, {110, 110}));
    EXPECT_FALSE(hit("，\u3007", boxes, {110, 110}));
    EXPECT_EQ(hit("a中", boxes, {119, 110})->offset, 1) << "the Chinese neighbour is in reach";
}

TEST(CharacterHit, ExaminesADisplayTextOfEqualLength) {
    const Boxes boxes{Rect{100, 100, 20, 20}, Rect{120, 100, 20, 20}};
    EXPECT_EQ(hit("ab", boxes, {110, 110}, "中b")->offset, 0) << "with the boxes of the reading";
    EXPECT_FALSE(hit("ab", boxes, {110, 110}, "中bc"));
    EXPECT_EQ(hit("中b", boxes, {110, 110}, "abc")->offset, 0);
    EXPECT_FALSE(hit("中b", boxes, {110, 110}, "ab"));
    EXPECT_EQ(hit("中b", boxes, {110, 110}, "a")->offset, 0) << "a shorter one does not count";
    EXPECT_FALSE(hit("ab", boxes, {110, 110}, "中"));
}

TEST(CharacterHit, NeedsBoxes) {
    EXPECT_FALSE(hit("中文", {}, {110, 110}));
    EXPECT_EQ(hit("中文", {std::nullopt, Rect{100, 100, 20, 20}}, {110, 110})->offset, 1);
}

TEST(ResolvableBoxes, AreThoseOfChineseCharacters) {
    const auto resolvable = [](const std::string& text, const Boxes& boxes,
                               const std::string& displayText) {
        return OCRCharacterHit::hasResolvableChineseCharacterBoxes(
            FakeText(text, 1, boxes, imageSize), displayText, imageSize);
    };
    const Rect box{100, 100, 20, 20};
    EXPECT_TRUE(resolvable("中文", {std::nullopt, box}, "中文"));
    EXPECT_FALSE(resolvable("中文", {}, "中文"));
    EXPECT_FALSE(resolvable("ab", {box, box}, "ab"));
    EXPECT_TRUE(resolvable("ab", {box, box}, "a文"));
    EXPECT_FALSE(resolvable("ab", {box, box}, "a文字"));
    EXPECT_FALSE(resolvable("a文", {box, std::nullopt}, "a文"));
    EXPECT_FALSE(resolvable("", {}, ""));
}

}  // namespace
}  // namespace velmora
