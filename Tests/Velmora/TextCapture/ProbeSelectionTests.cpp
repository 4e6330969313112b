// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/ProbeSelection.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "Tests/Support/TextCapture/FakeElement.h"
#include "Tests/Support/TextCapture/FakeScreens.h"
#include "Tests/Support/TextCapture/FakeText.h"
#include "Tests/Support/TextCapture/GenerousText.h"

namespace velmora {
namespace {

constexpr Size imageSize{1024, 512};

/// A region of 1024 × 512 pixels, two pixels a point, whose corner is (1000, 500) in capture space.
/// The desktop is 2000 points high.
class Selection : public testing::Test {
  protected:
    Selection() {
        region.captureRect = {1000, 500, 512, 256};
        region.imageSize = imageSize;
        region.scaleX = 2;
        region.scaleY = 2;
    }

    void addLine(const std::string& text, const Rect& rect) {
        add(FakeText::line(text, 1, rect, imageSize), rect);
    }

    void addLineWithoutBoxes(const std::string& text, const Rect& rect) {
        add(FakeText::lineWithoutBoxes(text, 1, rect, imageSize), rect);
    }

    static Point screenPoint(Point imagePoint) {
        return {1000 + imagePoint.x / 2, 500 + imagePoint.y / 2};
    }

    /// Selects for a pointer in image pixels; the rectangles are in capture space.
    std::optional<TextProbe> select(Point imagePoint, std::vector<Rect> excluding = {}) {
        TracedAttempt attempt({}, "test");
        return ProbeSelection(region, screenPoint(imagePoint), std::move(excluding), references,
                              flip)
            .selectProbe(attempt);
    }

    RecognizedRegion region;
    std::vector<ReferenceSource> references;
    DesktopFlip flip{2000.0, std::make_shared<FakeScreens>(), 0};

  private:
    void add(const TextObservation& line, const Rect& rect) {
        const auto& candidate = line.candidates.front();
        region.observations.push_back({candidate, candidate->string(), rect, 0});
    }
};

TEST_F(Selection, FindsNothingWithoutLines) {
    EXPECT_FALSE(select({100, 100}));
}

TEST_F(Selection, FindsTheCharacterByItsBox) {
    addLine("一二三四", {100, 100, 160, 40});
    const auto probe = select({190, 120});
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->text, "一二三四");
    EXPECT_EQ(probe->hoveredCharacterOffset, 2);
    EXPECT_EQ(probe->source, TextProbe::Source::hoveredText);
    // The box (180, 100, 40, 40) is (1090, 550, 20, 20) in capture space.
    EXPECT_EQ(probe->anchorRect, (Rect{1090, 1430, 20, 20}));
    EXPECT_EQ(probe->rangeAnchorRect(1, 3), (Rect{1070, 1430, 40, 20}));
}

TEST_F(Selection, HasNoWordsThatCannotBe) {
    addLine("一二三四", {100, 100, 160, 40});
    const auto probe = select({190, 120});
    ASSERT_TRUE(probe);
    EXPECT_FALSE(probe->rangeAnchorRect(3, 3));
    EXPECT_FALSE(probe->rangeAnchorRect(3, 2));
    EXPECT_FALSE(probe->rangeAnchorRect(-1, 2));
    EXPECT_FALSE(probe->rangeAnchorRect(2, 5));
    EXPECT_FALSE(probe->rangeAnchorRect(0, 1)) << "far from the pointer";
    EXPECT_FALSE(probe->rangeAnchorRect(std::numeric_limits<long long>::min(),
                                        std::numeric_limits<long long>::max()));
}

TEST_F(Selection, HasNoWordsOfCharactersThatAreNotThere) {
    const Rect line{100, 100, 160, 40};
    const auto text =
        std::make_shared<GenerousText>("一二三四", FakeText::normalized(line, imageSize));
    region.observations.push_back({text, text->string(), line, 0});
    const auto probe = select({190, 120});
    ASSERT_TRUE(probe);
    EXPECT_TRUE(probe->rangeAnchorRect(0, 4));
    EXPECT_FALSE(probe->rangeAnchorRect(3, 3));
    EXPECT_FALSE(probe->rangeAnchorRect(0, 5));
    EXPECT_FALSE(probe->rangeAnchorRect(-1, 4));
}

TEST_F(Selection, HasNoWordsWiderThan150PointsACharacter) {
    addLine("一二", {0, 100, 640, 300});
    const auto probe = select({160, 200});
    ASSERT_TRUE(probe);
    EXPECT_FALSE(probe->rangeAnchorRect(0, 1)) << "160 points wide";
    EXPECT_FALSE(probe->rangeAnchorRect(0, 2));
    EXPECT_FALSE(select({480, 200})->rangeAnchorRect(1, 2)) << "the word counts, not its place";
}

TEST_F(Selection, DropsLinesUnderItsOwnPanels) {
    addLineWithoutBoxes("一二三四", {100, 100, 160, 40});
    // In capture space the line is (1050, 550, 80, 20).
    const Rect panel{1040, 565, 300, 200};
    EXPECT_TRUE(select({190, 145}));
    EXPECT_FALSE(select({190, 145}, {panel})) << "5 pixels below the line";
    EXPECT_TRUE(select({190, 143}, {panel})) << "the pointer is on it, within 4 pixels";
    EXPECT_TRUE(select({190, 145}, {{1040, 570, 300, 200}})) << "it only touches the line";
    EXPECT_FALSE(select({190, 145}, {{0, 0, 10, 10}, panel}));
}

TEST_F(Selection, TriesTheNearestLineFirst) {
    addLineWithoutBoxes("一一一一", {100, 100, 160, 40});
    addLineWithoutBoxes("二二二二", {100, 130, 160, 40});
    EXPECT_EQ(select({190, 134})->text, "一一一一");
    EXPECT_EQ(select({190, 136})->text, "二二二二");
}

TEST_F(Selection, TriesTheLeftOneOfLinesEquallyNear) {
    addLineWithoutBoxes("右右右", {120, 100, 120, 40});
    addLineWithoutBoxes("左左左", {100, 100, 120, 40});
    EXPECT_EQ(select({190, 120})->text, "左左左");
}

TEST_F(Selection, KeepsTheOrderOfEqualLines) {
    addLineWithoutBoxes("先先先", {100, 100, 120, 40});
    addLineWithoutBoxes("后后后", {100, 100, 120, 40});
    EXPECT_EQ(select({190, 120})->text, "先先先");
}

TEST_F(Selection, KeepsTheOrderOfManyEqualLines) {
    addLineWithoutBoxes("先先先", {100, 100, 120, 40});
    for (int further = 0; further < 40; ++further) {
        addLineWithoutBoxes("后后后", {100, 100, 120, 40});
    }
    EXPECT_EQ(select({190, 120})->text, "先先先");
}

TEST_F(Selection, DoesNotEstimateInALineWithBoxes) {
    addLine("中abcdefg", {100, 100, 320, 40});
    addLineWithoutBoxes("一二三四五六七八", {100, 104, 320, 40});
    const auto probe = select({300, 120});
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->text, "一二三四五六七八") << "the next line";
    region.observations.pop_back();
    EXPECT_FALSE(select({300, 120}));
}

TEST_F(Selection, EstimatesInALineWithoutBoxes) {
    addLineWithoutBoxes("一二三四", {100, 100, 160, 20});
    // The estimate runs over the line grown by 8: 92…268, a cell is 44.
    const auto probe = select({190, 99});
    ASSERT_TRUE(probe) << "11 pixels above the centre";
    EXPECT_EQ(probe->hoveredCharacterOffset, 2);
    // The anchor comes from the line itself: (180, 100, 40, 20).
    EXPECT_EQ(probe->anchorRect, (Rect{1090, 1440, 20, 10}));
    EXPECT_TRUE(select({190, 95})) << "15 above";
    EXPECT_FALSE(select({190, 94})) << "16 above";
    EXPECT_FALSE(select({91, 110})) << "9 to the left";
    EXPECT_EQ(select({92, 110})->hoveredCharacterOffset, 0);
    EXPECT_FALSE(probe->rangeAnchorRect(2, 3)) << "no boxes, no word";
}

TEST_F(Selection, EstimatesOnlyChineseCharacters) {
    addLineWithoutBoxes("一bc四", {100, 100, 160, 20});
    EXPECT_FALSE(select({160, 110}));
    EXPECT_EQ(select({110, 110})->hoveredCharacterOffset, 0);
}

TEST_F(Selection, NeedsALineWithAnArea) {
    addLineWithoutBoxes("一二三四", {100, 100, 0, 20});
    addLineWithoutBoxes("一二三四", {100, 100, 160, 0});
    EXPECT_FALSE(select({100, 100}));
}

TEST_F(Selection, CorrectsTheLineByAReferenceText) {
    addLine("中国入民", {100, 100, 160, 40});
    const auto element = FakeElement::line("在中国人民里", {1030, 550}, {20, 20});
    references = {{FakeElement::make(), "无关"}, {element, "在中国人民里"}};
    const auto probe = select({190, 120});
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->text, "中国人民");
    EXPECT_EQ(probe->hoveredCharacterOffset, 2);
    // The third character of the reference's part is its fourth: exact bounds.
    EXPECT_EQ(element->boundsRead.back(), (Utf16Range{3, 1}));
    EXPECT_EQ(probe->anchorRect, (Rect{1090, 1430, 20, 20}));
    EXPECT_EQ(probe->rangeAnchorRect(2, 4), (Rect{1090, 1430, 40, 20}));
    EXPECT_EQ(element->boundsRead.back(), (Utf16Range{3, 2}));
}

TEST_F(Selection, LeavesALineWithTwoErrorsAlone) {
    addLine("申国入民", {100, 100, 160, 40});
    references = {{FakeElement::make(), "在中国人民里"}};
    EXPECT_EQ(select({190, 120})->text, "申国入民");
}

TEST_F(Selection, PrefersTheReferencesBoundsOnlyWhereTheyArePlausible) {
    addLine("中国人民", {100, 100, 160, 40});
    const auto element = FakeElement::make();
    references = {{element, "中国人民"}};
    element->onBoundsForRange = [](Utf16Range) { return Rect{1091, 551, 18, 18}; };
    auto probe = select({190, 120});
    EXPECT_EQ(probe->anchorRect, (Rect{1091, 1431, 18, 18}));
    EXPECT_EQ(probe->rangeAnchorRect(2, 4), (Rect{1091, 1431, 18, 18}));
    element->onBoundsForRange = [](Utf16Range) { return Rect{1191, 551, 18, 18}; };
    probe = select({190, 120});
    EXPECT_EQ(probe->anchorRect, (Rect{1090, 1430, 20, 20})) << "the recogniser's box";
    EXPECT_EQ(probe->rangeAnchorRect(2, 4), (Rect{1090, 1430, 40, 20}));
    element->onBoundsForRange = nullptr;
    probe = select({190, 120});
    EXPECT_EQ(probe->anchorRect, (Rect{1090, 1430, 20, 20}));
}

TEST_F(Selection, BorrowsBoxesForCorrectedCharacters) {
    // The misread character is no Chinese one; the reference's is, and stands in its box.
    addLine("中国A民", {100, 100, 160, 40});
    references = {{FakeElement::make(), "中国人民"}};
    const auto probe = select({200, 120});
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->text, "中国人民");
    EXPECT_EQ(probe->hoveredCharacterOffset, 2);
}

TEST_F(Selection, DoesNotEstimateWhereACorrectedCharacterHasABox) {
    // Only the reference tells that the first character is a Chinese one, and its box that the
    // pointer is not on it.
    addLine("ab", {100, 100, 40, 20});
    references = {{FakeElement::make(), "一b"}};
    EXPECT_EQ(select({95, 110})->text, "一b");
    EXPECT_FALSE(select({93, 110}));
}

TEST_F(Selection, EstimatesInTheCorrectedLine) {
    addLineWithoutBoxes("a国人民", {100, 100, 160, 20});
    EXPECT_FALSE(select({110, 110}));
    references = {{FakeElement::make(), "中国人民"}};
    const auto probe = select({110, 110});
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->text, "中国人民");
    EXPECT_EQ(probe->hoveredCharacterOffset, 0);
}

TEST_F(Selection, TellsWhereAWordStandsOnTheDesktopAsItIsThen) {
    addLine("一二三四", {100, 100, 160, 40});
    const auto screens = std::make_shared<FakeScreens>();
    flip = DesktopFlip(std::nullopt, screens, 0);
    const auto element = FakeElement::make();
    references = {{element, "一二三四"}};
    const auto probe = select({190, 120});
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->rangeAnchorRect(2, 3), (Rect{1090, 430, 20, 20}));
    screens->list = {{{0, 0, 1600, 1200}, {0, 0, 1600, 1200}}};
    EXPECT_EQ(probe->rangeAnchorRect(2, 3), (Rect{1090, 630, 20, 20}));
    element->onBoundsForRange = [](Utf16Range) { return Rect{1091, 551, 18, 18}; };
    EXPECT_EQ(probe->rangeAnchorRect(2, 3), (Rect{1091, 631, 18, 18})) << "asked again as well";
}

TEST_F(Selection, KeepsItsProbeAfterTheRegionIsGone) {
    addLine("一二三四", {100, 100, 160, 40});
    const auto probe = select({190, 120});
    region = RecognizedRegion();
    references.clear();
    EXPECT_EQ(probe->rangeAnchorRect(2, 3), (Rect{1090, 1430, 20, 20}));
}

}  // namespace
}  // namespace velmora
