// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "Tests/Support/TextCapture/FakeElement.h"
#include "Tests/Support/TextCapture/FakeScreens.h"
#include "Velmora/TextCapture/ParameterizedText.h"
#include "Velmora/TextCapture/SelectedText.h"
#include "Velmora/TextCapture/WholeValue.h"
#include "VelmoraCore/CharacterText.h"

namespace velmora {
namespace {

constexpr std::int64_t radius = 24;

std::string repeated(const std::string& text, int times) {
    std::string result;
    for (int count = 0; count < times; ++count) {
        result += text;
    }
    return result;
}

/// Probes one element; the desktop is 1000 points high.
class ElementProbe : public testing::Test {
  protected:
    std::optional<TextProbe> parameterized(Point pointer) {
        TracedAttempt attempt({}, "test");
        return ParameterizedText::extract(element, pointer, radius, flip, attempt);
    }
    std::optional<TextProbe> whole(Point pointer) {
        TracedAttempt attempt({}, "test");
        return WholeValue::extract(element, pointer, flip, attempt);
    }
    std::optional<TextProbe> selected(Point pointer) {
        TracedAttempt attempt({}, "test");
        return SelectedText::extract(*element, pointer, flip, attempt);
    }

    DesktopFlip flip{1000.0, std::make_shared<FakeScreens>(), 0};
    std::shared_ptr<FakeElement> element = FakeElement::make();
};

using SelectionProbe = ElementProbe;
using ParameterizedProbe = ElementProbe;
using WholeValueProbe = ElementProbe;

TEST_F(SelectionProbe, HoldsTheSelectionAndItsFirstChineseCharacter) {
    element->selection = "ab 中文";
    element->selectionRange = Utf16Range{4, 5};
    element->onBoundsForRange = [](Utf16Range range) {
        EXPECT_EQ(range, (Utf16Range{4, 5}));
        return Rect{100, 200, 50, 20};
    };
    const auto probe = selected({120, 210});
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->text, "ab 中文");
    EXPECT_EQ(probe->hoveredCharacterOffset, 3);
    EXPECT_EQ(probe->anchorRect, (Rect{100, 780, 50, 20})) << "not grown, turned around";
    EXPECT_EQ(probe->source, TextProbe::Source::selectedText);
    EXPECT_FALSE(probe->rangeAnchorRect);
}

TEST_F(SelectionProbe, ReachesThreePointsBeyondItsBounds) {
    element->selection = "中文";
    element->selectionRange = Utf16Range{0, 2};
    element->onBoundsForRange = [](Utf16Range) { return Rect{100, 200, 50, 20}; };
    EXPECT_TRUE(selected({97, 210}));
    EXPECT_FALSE(selected({96.9, 210}));
    EXPECT_TRUE(selected({152.9, 210}));
    EXPECT_FALSE(selected({153.1, 210}));
    EXPECT_TRUE(selected({120, 197}));
    EXPECT_FALSE(selected({120, 196.9}));
}

TEST_F(SelectionProbe, NeedsChineseTextARangeAndBounds) {
    element->selectionRange = Utf16Range{0, 2};
    element->onBoundsForRange = [](Utf16Range) { return Rect{100, 200, 50, 20}; };
    EXPECT_FALSE(selected({120, 210})) << "nothing selected";
    element->selection = "";
    EXPECT_FALSE(selected({120, 210}));
    element->selection = "abc，\u3007";
    EXPECT_FALSE(selected({120, 210})) << "no Chinese character";
    element->selection = "中文";
    EXPECT_TRUE(selected({120, 210}));
    element->selectionRange = Utf16Range{-1, 2};
    EXPECT_FALSE(selected({120, 210}));
    element->selectionRange = Utf16Range{0, 2};
    element->onBoundsForRange = nullptr;
    EXPECT_FALSE(selected({120, 210}));
}

TEST_F(SelectionProbe, IgnoresASelectionWithoutEnd) {
    element->selection = "中" + std::string(100'000'000, 'a');
    element->selectionRange = Utf16Range{0, 2};
    element->onBoundsForRange = [](Utf16Range) { return Rect{100, 200, 50, 20}; };
    EXPECT_FALSE(selected({120, 210}));
}

TEST_F(ParameterizedProbe, TakesAWindowFromTheStartOfAShortText) {
    element = FakeElement::line(repeated("一二三四五", 6), {0, 100}, {20, 20});
    const auto probe = parameterized({205, 110});
    ASSERT_TRUE(probe);
    EXPECT_EQ(element->stringsRead, (std::vector<Utf16Range>{{0, 30}}));
    EXPECT_EQ(probe->text, repeated("一二三四五", 6));
    EXPECT_EQ(probe->hoveredCharacterOffset, 10);
    EXPECT_EQ(probe->anchorRect, (Rect{200, 880, 20, 20}));
    EXPECT_EQ(probe->source, TextProbe::Source::hoveredText);
}

TEST_F(ParameterizedProbe, TakesFortyEightUnitsAroundAPlaceInALongText) {
    element = FakeElement::line(repeated("一二三四五", 100), {0, 100}, {20, 20});
    const auto probe = parameterized({2005, 110});
    ASSERT_TRUE(probe);
    EXPECT_EQ(element->stringsRead, (std::vector<Utf16Range>{{76, 48}}));
    EXPECT_EQ(probe->hoveredCharacterOffset, 24);
    EXPECT_EQ(probe->text.substr(0, 3), "二");
}

TEST_F(ParameterizedProbe, EndsWithTheText) {
    element = FakeElement::line(repeated("一二三四五", 6), {0, 100}, {20, 20});
    ASSERT_TRUE(parameterized({595, 110}));
    EXPECT_EQ(element->stringsRead, (std::vector<Utf16Range>{{5, 25}}));
}

TEST_F(ParameterizedProbe, TakesBoundsOfOneUnitForAnEmptyRange) {
    element = FakeElement::line("中文", {0, 100}, {20, 20});
    for (const std::int64_t length : {0, -5}) {
        element->boundsRead.clear();
        element->onRangeForPosition = [length](Point) { return Utf16Range{1, length}; };
        EXPECT_TRUE(parameterized({30, 110}));
        EXPECT_EQ(element->boundsRead, (std::vector<Utf16Range>{{1, 1}}));
    }
}

TEST_F(ParameterizedProbe, NeedsAPosition) {
    element = FakeElement::line("中文", {0, 100}, {20, 20});
    element->onRangeForPosition = [](Point) { return Utf16Range{-1, 1}; };
    EXPECT_FALSE(parameterized({30, 110}));
    element->onRangeForPosition = nullptr;
    EXPECT_FALSE(parameterized({30, 110}));
    EXPECT_TRUE(element->boundsRead.empty());
}

TEST_F(ParameterizedProbe, NeedsBoundsThatMayBeACharacterAtThePointer) {
    element = FakeElement::line("中文", {0, 100}, {20, 20});
    Rect bounds{0, 100, 150, 20};
    element->onBoundsForRange = [&](Utf16Range) { return bounds; };
    EXPECT_TRUE(parameterized({30, 110}));
    bounds.width = 151;
    EXPECT_FALSE(parameterized({30, 110}));
    bounds = {20, 100, 20, 151};
    EXPECT_FALSE(parameterized({30, 110}));
    bounds = {20, 100, 0, 20};
    EXPECT_FALSE(parameterized({20, 110}));
    bounds = {20, 100, 20, -20};
    EXPECT_FALSE(parameterized({30, 90}));
    bounds = {33, 100, 20, 20};
    EXPECT_FALSE(parameterized({30, 110})) << "no direct hit";
    bounds = {32, 100, 20, 20};
    EXPECT_TRUE(parameterized({30, 110}));
    bounds.y = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(parameterized({30, 110}));
}

TEST_F(ParameterizedProbe, FallsBackOnTheValueForTheWindow) {
    element = FakeElement::line(repeated("一二三四五", 100), {0, 100}, {20, 20});
    element->onStringForRange = nullptr;
    const auto probe = parameterized({2005, 110});
    ASSERT_TRUE(probe);
    EXPECT_EQ(CharacterText(probe->text).count(), 48U);
    EXPECT_EQ(probe->hoveredCharacterOffset, 24);
}

TEST_F(ParameterizedProbe, GivesUpWithoutText) {
    element = FakeElement::line("中文", {0, 100}, {20, 20});
    element->onStringForRange = [](Utf16Range) { return ""; };
    EXPECT_FALSE(parameterized({30, 110})) << "an empty answer is an answer";
    element->valueText = std::nullopt;
    element->onStringForRange = [](Utf16Range) { return "中文"; };
    EXPECT_FALSE(parameterized({30, 110})) << "a text of no length has no window";
    element->titleText = "标题";
    EXPECT_TRUE(parameterized({30, 110})) << "the title stands in";
}

TEST_F(ParameterizedProbe, GivesUpBeyondTheText) {
    element = FakeElement::line("中文", {0, 100}, {20, 20});
    element->onBoundsForRange = [](Utf16Range) { return Rect{20, 100, 20, 20}; };
    std::int64_t location = 25;
    element->onRangeForPosition = [&](Point) { return Utf16Range{location, 1}; };
    const auto probe = parameterized({30, 110});
    ASSERT_TRUE(probe) << "one unit of the text is still in the window";
    EXPECT_EQ(probe->hoveredCharacterOffset, 1) << "held back to the end";
    location = 26;
    EXPECT_FALSE(parameterized({30, 110}));
    location = std::numeric_limits<std::int64_t>::max();
    EXPECT_FALSE(parameterized({30, 110}));
    location = std::numeric_limits<std::int64_t>::min();
    EXPECT_FALSE(parameterized({30, 110}));
}

TEST_F(ParameterizedProbe, EndsAtTheEndWhenThePositionIsInsideACharacter) {
    const std::string text = "\U0001F600中";
    element = FakeElement::line(text, {0, 100}, {20, 20});
    element->onRangeForPosition = [](Point) { return Utf16Range{1, 1}; };
    auto probe = parameterized({30, 110});
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->hoveredCharacterOffset, 2);
    element->onRangeForPosition = [](Point) { return Utf16Range{2, 1}; };
    probe = parameterized({50, 110});
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->hoveredCharacterOffset, 1);
}

TEST_F(ParameterizedProbe, ReadsOnlyTheWindowOfALongText) {
    element = FakeElement::line(repeated("一二三四五", 100), {0, 100}, {20, 20});
    element->valueText = std::nullopt;
    element->titleText = "标题";
    element->longLength = 500;
    auto probe = parameterized({2005, 110});
    ASSERT_TRUE(probe);
    EXPECT_EQ(element->stringsRead, (std::vector<Utf16Range>{{76, 48}}));
    EXPECT_EQ(probe->hoveredCharacterOffset, 24);
    element->onStringForRange = nullptr;
    EXPECT_FALSE(parameterized({2005, 110}));
    element->longLength = std::numeric_limits<std::int64_t>::min();
    EXPECT_FALSE(parameterized({2005, 110}));
}

TEST_F(ParameterizedProbe, CutsAnAnswerThatIsLongerThanAsked) {
    element = FakeElement::line(repeated("一二三四五", 6), {0, 100}, {20, 20});
    element->onStringForRange = [](Utf16Range) { return repeated("中", 100'000); };
    const auto probe = parameterized({205, 110});
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->text, repeated("中", 30));
}

TEST_F(ParameterizedProbe, KnowsWhereItsWordsStand) {
    element = FakeElement::line(repeated("一二三四五", 100), {0, 100}, {20, 20});
    const auto probe = parameterized({2005, 110});
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->rangeAnchorRect(24, 26), (Rect{2000, 880, 40, 20}));
    EXPECT_EQ(element->boundsRead.back(), (Utf16Range{100, 2}));
    EXPECT_FALSE(probe->rangeAnchorRect(24, 24));
    EXPECT_FALSE(probe->rangeAnchorRect(26, 24));
    EXPECT_FALSE(probe->rangeAnchorRect(-1, 24));
    EXPECT_FALSE(probe->rangeAnchorRect(24, 49));
    EXPECT_FALSE(probe->rangeAnchorRect(std::numeric_limits<long long>::min(),
                                        std::numeric_limits<long long>::max()));
    EXPECT_FALSE(probe->rangeAnchorRect(30, 32)) << "too far from the pointer";
    element->onBoundsForRange = [](Utf16Range) { return Rect{2000, 100, 301, 20}; };
    EXPECT_FALSE(probe->rangeAnchorRect(24, 26));
    element->onBoundsForRange = nullptr;
    EXPECT_FALSE(probe->rangeAnchorRect(24, 26));
}

TEST_F(ParameterizedProbe, CountsUtf16UnitsForItsWords) {
    element = FakeElement::line("\U0001F600中文", {0, 100}, {20, 20});
    const auto probe = parameterized({50, 110});
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->hoveredCharacterOffset, 1);
    EXPECT_EQ(probe->rangeAnchorRect(1, 3), (Rect{40, 880, 40, 20}));
}

TEST_F(WholeValueProbe, FindsTheCharacterThroughItsBounds) {
    // The estimate from the element's width is off by one; the bounds know better.
    element = FakeElement::line("一二三四五六七八九十", {0, 100}, {20, 20});
    element->extent = Size{240, 20};
    const auto probe = whole({125, 110});
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->text, "一二三四五六七八九十");
    EXPECT_EQ(probe->hoveredCharacterOffset, 6);
    EXPECT_EQ(probe->anchorRect, (Rect{120, 880, 20, 20}));
    EXPECT_EQ(probe->source, TextProbe::Source::hoveredText);
}

TEST_F(WholeValueProbe, RefinesInALongOrBrokenText) {
    element = FakeElement::line("一二\n四五", {0, 100}, {100, 20});
    const auto probe = whole({120, 110});
    ASSERT_TRUE(probe) << "500 wide and of two lines, yet found";
    EXPECT_EQ(probe->hoveredCharacterOffset, 1);
}

TEST_F(WholeValueProbe, EstimatesInAShortLineWithoutBounds) {
    element->valueText = "一二三四";
    element->origin = Point{0, 100};
    element->extent = Size{100, 20};
    const auto probe = whole({50, 110});
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->hoveredCharacterOffset, 2);
    EXPECT_EQ(probe->anchorRect, (Rect{50, 880, 21, 20}));
}

TEST_F(WholeValueProbe, DoesNotEstimateWhereTheElementHasBounds) {
    element->valueText = "一二三四";
    element->origin = Point{0, 100};
    element->extent = Size{100, 20};
    element->onBoundsForRange = [](Utf16Range) { return Rect{500, 500, 20, 20}; };
    EXPECT_FALSE(whole({50, 110}));
}

TEST_F(WholeValueProbe, DoesNotEstimateInLargeElementsOrSeveralLines) {
    element->valueText = "一二三四";
    element->origin = Point{0, 100};
    element->extent = Size{420, 90};
    EXPECT_TRUE(whole({200, 110}));
    element->extent = Size{421, 90};
    EXPECT_FALSE(whole({200, 110}));
    element->extent = Size{420, 91};
    EXPECT_FALSE(whole({200, 110}));
    element->extent = Size{420, 90};
    element->valueText = "一二\n三四五";
    EXPECT_FALSE(whole({300, 110}));
}

TEST_F(WholeValueProbe, NeedsTextBoundsAndAChineseCharacter) {
    element->origin = Point{0, 100};
    element->extent = Size{100, 20};
    EXPECT_FALSE(whole({50, 110}));
    element->valueText = "abcd";
    EXPECT_FALSE(whole({50, 110}));
    element->valueText = "一二cd";
    EXPECT_FALSE(whole({55, 110})) << "nothing nearby is taken";
    EXPECT_TRUE(whole({30, 110}));
    EXPECT_FALSE(whole({30, 130})) << "beside the element";
    element->extent = std::nullopt;
    EXPECT_FALSE(whole({30, 110}));
}

TEST_F(WholeValueProbe, EstimatesItsWordsToo) {
    element->valueText = "一二三四";
    element->origin = Point{0, 100};
    element->extent = Size{100, 20};
    const auto probe = whole({50, 110});
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->rangeAnchorRect(1, 3), (Rect{29, 880, 42, 20}));
    EXPECT_FALSE(probe->rangeAnchorRect(1, 5));
    EXPECT_FALSE(probe->rangeAnchorRect(-1, 2));
    EXPECT_FALSE(probe->rangeAnchorRect(2, 2));
    element->onBoundsForRange = [](Utf16Range) { return Rect{30, 100, 38, 18}; };
    EXPECT_EQ(probe->rangeAnchorRect(1, 3), (Rect{30, 882, 38, 18})) << "bounds come first";
    element->onBoundsForRange = [](Utf16Range) { return Rect{900, 100, 38, 18}; };
    EXPECT_EQ(probe->rangeAnchorRect(1, 3), (Rect{29, 880, 42, 20})) << "unless they are absurd";
}

TEST_F(WholeValueProbe, HasNoEstimatedWordsInALargeElement) {
    element = FakeElement::line("一二三四五", {0, 100}, {100, 20});
    const auto probe = whole({120, 110});
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->rangeAnchorRect(1, 2), (Rect{100, 880, 100, 20}));
    element->onBoundsForRange = nullptr;
    EXPECT_FALSE(probe->rangeAnchorRect(1, 2));
}

}  // namespace
}  // namespace velmora
