// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/OCRRegionAcceptance.h"

#include <gtest/gtest.h>

#include <string>

#include "Tests/Support/TextCapture/FakeText.h"
#include "Velmora/TextCapture/LineTest.h"

namespace velmora {
namespace {

constexpr Size imageSize{512, 160};

/// A region of 512 × 160 pixels that starts at (1000, 500) in capture space, one pixel a point.
class Acceptance : public testing::Test {
  protected:
    Acceptance() {
        region.captureRect = {1000, 500, 512, 160};
        region.imageSize = imageSize;
        region.scaleX = 1;
        region.scaleY = 1;
    }

    /// A line of square characters with boxes, at a place in image pixels.
    void addLine(const std::string& text, float confidence, const Rect& rect) {
        add(FakeText::line(text, confidence, rect, imageSize), rect);
    }

    void addLineWithoutBoxes(const std::string& text, float confidence, const Rect& rect) {
        add(FakeText::lineWithoutBoxes(text, confidence, rect, imageSize), rect);
    }

    /// Decides for a pointer in image pixels.
    bool accepted(Point imagePoint) {
        const auto result = OCRRegionAcceptance::acceptedOCRRegion(
            region, {1000 + imagePoint.x, 500 + imagePoint.y}, slot);
        if (result) {
            EXPECT_EQ(result->observations.size(), region.observations.size());
        }
        return result.has_value();
    }

    RecognizedRegion region;
    std::optional<RecognizedRegion> slot;

  private:
    void add(const TextObservation& line, const Rect& rect) {
        const auto& candidate = line.candidates.front();
        region.observations.push_back({candidate, candidate->string(), rect, 0});
    }
};

TEST_F(Acceptance, NeedsObservations) {
    EXPECT_FALSE(accepted({256, 80}));
    EXPECT_FALSE(slot);
}

TEST_F(Acceptance, TakesACertainCharacter) {
    addLine("中文", 0.995F, {240, 65, 60, 30});
    EXPECT_TRUE(accepted({256, 80}));
    EXPECT_TRUE(slot);
}

TEST_F(Acceptance, TakesItFromExactly99PercentOn) {
    addLine("中文", 0.99F, {240, 65, 60, 30});
    EXPECT_TRUE(accepted({256, 80}));
}

TEST_F(Acceptance, KeepsALessCertainCharacterAsFallback) {
    addLine("中文", 0.98F, {240, 65, 60, 30});
    EXPECT_FALSE(accepted({256, 80}));
    EXPECT_TRUE(slot);
}

TEST_F(Acceptance, TakesALaterReadingOfTheSameLine) {
    addLine("中丈", 0.98F, {240, 65, 60, 30});
    addLine("中文", 0.99F, {240, 65, 60, 30});
    EXPECT_TRUE(accepted({256, 80}));
}

TEST_F(Acceptance, KnowsNothingBesideTheLines) {
    addLine("中文", 1, {0, 0, 60, 30});
    EXPECT_FALSE(accepted({256, 80}));
    EXPECT_FALSE(slot);
}

TEST_F(Acceptance, NeverTakesAGlyphThatFillsThePicture) {
    addLine("中", 1, {200, 5, 100, 150});
    EXPECT_FALSE(accepted({250, 80}));
    EXPECT_TRUE(slot) << "its confidence is at least 0.5";
}

TEST_F(Acceptance, KeepsAFillingGlyphOnlyWhereItIsUsable) {
    addLine("中a", 0.49F, {200, 5, 200, 150});
    EXPECT_FALSE(accepted({250, 80}));
    EXPECT_FALSE(slot);
    region.observations.clear();
    addLine("中文", 0.3F, {200, 5, 200, 150});
    EXPECT_FALSE(accepted({250, 80}));
    EXPECT_TRUE(slot) << "two Chinese characters";
    slot.reset();
    region.observations.clear();
    addLine("中a", 0.5F, {200, 5, 200, 150});
    EXPECT_FALSE(accepted({250, 80}));
    EXPECT_TRUE(slot) << "confidence 0.5";
}

TEST_F(Acceptance, CallsAGlyphFillingFrom92PercentOn) {
    // 147.2 of 160 pixels are 92 %.
    addLine("中", 1, {200, 5, 100, 147});
    EXPECT_TRUE(accepted({250, 80}));
    region.observations.clear();
    addLine("中", 1, {200, 5, 100, 148});
    EXPECT_FALSE(accepted({250, 80}));
}

TEST_F(Acceptance, CallsAGlyphFillingFromExactly92PercentOn) {
    constexpr Size low{512, 100};
    region.imageSize = low;
    const auto show = [&](double height) {
        const Rect rect{200, 4, 100, height};
        region.observations = {
            {FakeText::line("中", 1, rect, low).candidates.front(), "中", rect, 0}};
    };
    show(91.99);
    EXPECT_TRUE(accepted({250, 50}));
    show(92);
    EXPECT_FALSE(accepted({250, 50}));
}

TEST_F(Acceptance, AFillingGlyphRulesOutTheLines) {
    addLine("中", 1, {200, 5, 100, 150});
    addLineWithoutBoxes("一二三", 1, {200, 60, 120, 40});
    EXPECT_FALSE(accepted({250, 80}));
}

TEST_F(Acceptance, ACertainCharacterAfterAFillingGlyphIsTaken) {
    addLine("中", 0.4F, {200, 5, 100, 150});
    addLine("国文", 1, {240, 65, 60, 30});
    EXPECT_TRUE(accepted({256, 80}));
}

TEST_F(Acceptance, ALineWithBoxesButNoCharacterThereIsNotTaken) {
    // The pointer is on the Latin part, far from the Chinese character.
    addLine("中abcdefg", 1, {100, 65, 240, 30});
    EXPECT_FALSE(accepted({256, 80}));
    EXPECT_FALSE(slot);
}

TEST_F(Acceptance, SuchALineRulesOutTheOthers) {
    addLine("中abcdefg", 1, {100, 65, 240, 30});
    addLineWithoutBoxes("一二三四", 1, {200, 65, 120, 30});
    EXPECT_FALSE(accepted({256, 80}));
    EXPECT_FALSE(slot);
    region.observations.clear();
    addLineWithoutBoxes("一二三四", 1, {200, 65, 120, 30});
    addLine("中abcdefg", 1, {100, 65, 240, 30});
    EXPECT_FALSE(accepted({256, 80}));
    EXPECT_FALSE(slot);
}

TEST_F(Acceptance, AnEarlierCertainCharacterIsTakenBeforeSuchALine) {
    addLine("文", 1, {241, 65, 30, 30});
    addLine("中abcdefg", 1, {100, 65, 240, 30});
    EXPECT_TRUE(accepted({256, 80}));
}

TEST_F(Acceptance, CallsACharacterCertainFromExactly99PercentOn) {
    // The line after it rules out that a certain line would do instead.
    addLine("文", 0.99F, {241, 65, 30, 30});
    addLine("中abcdefg", 1, {100, 65, 240, 30});
    EXPECT_TRUE(accepted({256, 80}));
    region.observations.clear();
    addLine("文", 0.9899F, {241, 65, 30, 30});
    addLine("中abcdefg", 1, {100, 65, 240, 30});
    EXPECT_FALSE(accepted({256, 80}));
    EXPECT_TRUE(slot);
}

TEST_F(Acceptance, ACharacterOutsideItsLineStillCounts) {
    // 13.9 pixels above the line: in reach of its characters, not on the line.
    addLine("中文", 1, {240, 65, 60, 30});
    const Point above{256, 57.7};
    ASSERT_FALSE(isOnLine({240, 65, 60, 30}, above));
    EXPECT_TRUE(accepted(above));
    region.observations.clear();
    slot.reset();
    addLine("中文", 0.9F, {240, 65, 60, 30});
    EXPECT_FALSE(accepted(above));
    EXPECT_TRUE(slot);
}

TEST_F(Acceptance, AFillingCharacterOutsideItsLineStillCounts) {
    addLine("中文", 1, {200, 5, 200, 150});
    const Point beside{411, 80};
    ASSERT_FALSE(isOnLine({200, 5, 200, 150}, beside));
    EXPECT_FALSE(accepted(beside));
    EXPECT_TRUE(slot);
}

TEST_F(Acceptance, TakesACertainLineWithoutBoxes) {
    addLineWithoutBoxes("一二三四", 0.99F, {200, 65, 120, 30});
    EXPECT_TRUE(accepted({256, 80}));
    EXPECT_TRUE(slot);
}

TEST_F(Acceptance, KeepsALessCertainLineWithoutBoxes) {
    addLineWithoutBoxes("一二三四", 0.98F, {200, 65, 120, 30});
    EXPECT_FALSE(accepted({256, 80}));
    EXPECT_TRUE(slot);
}

TEST_F(Acceptance, TakesACertainLineBesideALessCertainCharacter) {
    addLine("文", 0.9F, {241, 65, 30, 30});
    addLineWithoutBoxes("一二三四", 1, {200, 65, 120, 30});
    EXPECT_TRUE(accepted({256, 80}));
}

TEST_F(Acceptance, DoesNotTakeACertainLineElsewhere) {
    addLine("文", 0.9F, {241, 65, 30, 30});
    addLineWithoutBoxes("一二三四", 1, {200, 5, 120, 30});
    EXPECT_FALSE(accepted({256, 80}));
}

TEST_F(Acceptance, ReplacesAnOlderFallback) {
    slot = RecognizedRegion();
    addLine("中文", 0.98F, {240, 65, 60, 30});
    EXPECT_FALSE(accepted({256, 80}));
    EXPECT_EQ(slot->observations.size(), 1U);
}

TEST_F(Acceptance, LeavesAnOlderFallbackWhereNothingIs) {
    slot = region;
    slot->observations.resize(3);
    addLine("中文", 1, {0, 0, 60, 30});
    EXPECT_FALSE(accepted({256, 80}));
    EXPECT_EQ(slot->observations.size(), 3U);
}

TEST_F(Acceptance, ConvertsThePointerIntoPixels) {
    region.captureRect = {1000, 500, 256, 80};
    region.scaleX = 2;
    region.scaleY = 2;
    addLine("中文", 1, {240, 65, 60, 30});
    EXPECT_TRUE(OCRRegionAcceptance::acceptedOCRRegion(region, {1128, 540}, slot));
    EXPECT_FALSE(OCRRegionAcceptance::acceptedOCRRegion(region, {1256, 580}, slot));
}

TEST(LineTest, ToleratesFiveToTwelvePixelsAboveAndBelow) {
    const Rect low{100, 100, 200, 10};
    EXPECT_TRUE(isOnLine(low, {150, 95}));
    EXPECT_FALSE(isOnLine(low, {150, 94.9}));
    const Rect high{100, 100, 200, 100};
    EXPECT_TRUE(isOnLine(high, {150, 88}));
    EXPECT_FALSE(isOnLine(high, {150, 87.9}));
    const Rect middling{100, 100, 200, 30};
    EXPECT_TRUE(isOnLine(middling, {150, 92.81}));
    EXPECT_FALSE(isOnLine(middling, {150, 92.79}));
}

TEST(LineTest, ToleratesEightPixelsBeside) {
    const Rect line{100, 100, 200, 30};
    EXPECT_TRUE(isOnLine(line, {92, 110}));
    EXPECT_FALSE(isOnLine(line, {91.9, 110}));
    EXPECT_TRUE(isOnLine(line, {307.9, 110}));
    EXPECT_FALSE(isOnLine(line, {308, 110}));
    EXPECT_FALSE(isOnLine({100, 100, 0, 30}, {100, 110}));
    EXPECT_FALSE(isOnLine({100, 100, 200, 0}, {110, 100}));
}

}  // namespace
}  // namespace velmora
