// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/ElementReading.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "Tests/Support/TextCapture/FakeAccessibility.h"
#include "Tests/Support/TextCapture/FakeElement.h"
#include "Velmora/TextCapture/ElementCharacters.h"

namespace velmora {
namespace {

using Element = std::shared_ptr<FakeElement>;

/// A chain of parents; the first is the deepest.
std::vector<Element> chain(std::size_t length) {
    std::vector<Element> elements;
    for (std::size_t index = 0; index < length; ++index) {
        elements.push_back(FakeElement::make());
        if (index > 0) {
            elements[index - 1]->parentElement = elements[index];
        }
    }
    return elements;
}

TEST(CandidateElements, OfAnElementWithoutParentAreOne) {
    const auto element = FakeElement::make();
    EXPECT_EQ(ElementReading::candidateElements(element),
              std::vector<ElementReading::Element>{element});
}

TEST(CandidateElements, EndAfterFourAncestors) {
    const auto elements = chain(7);
    const auto candidates = ElementReading::candidateElements(elements.front());
    ASSERT_EQ(candidates.size(), 5U);
    for (std::size_t index = 0; index < 5; ++index) {
        EXPECT_EQ(candidates[index], elements[index]);
    }
}

TEST(CandidateElements, OfACircleAreFive) {
    const auto elements = chain(2);
    elements[1]->parentElement = elements[0];
    EXPECT_EQ(ElementReading::candidateElements(elements[0]).size(), 5U);
    elements[1]->parentElement = nullptr;
}

TEST(SelectedTextCandidates, AddTheFocusedChainOnce) {
    FakeAccessibility system;
    const auto under = chain(2);
    const auto focused = chain(3);
    focused[2]->parentElement = nullptr;
    focused[1]->parentElement = under[1];
    system.focused = focused[0];
    const auto base = ElementReading::candidateElements(under[0]);
    EXPECT_EQ(ElementReading::selectedTextCandidates(base, system),
              (std::vector<ElementReading::Element>{under[0], under[1], focused[0], focused[1]}));
}

TEST(SelectedTextCandidates, TellElementsApartByIdentityNotByAddress) {
    FakeAccessibility system;
    const auto under = FakeElement::make();
    const auto sameAgain = FakeElement::make();
    under->identity = 7;
    sameAgain->identity = 7;
    system.focused = sameAgain;
    EXPECT_EQ(ElementReading::selectedTextCandidates({under}, system).size(), 1U);
    sameAgain->identity = 8;
    EXPECT_EQ(ElementReading::selectedTextCandidates({under}, system).size(), 2U);
}

TEST(SelectedTextCandidates, DoWithoutAFocusedElement) {
    FakeAccessibility system;
    EXPECT_EQ(ElementReading::selectedTextCandidates({FakeElement::make()}, system).size(), 1U);
    EXPECT_TRUE(ElementReading::focusedElements(system).empty());
}

TEST(SelectedTextRange, MustBeThereAndHoldSomething) {
    const auto element = FakeElement::make();
    EXPECT_FALSE(ElementReading::copySelectedTextRange(*element));
    element->selectionRange = Utf16Range{-1, 5};
    EXPECT_FALSE(ElementReading::copySelectedTextRange(*element));
    element->selectionRange = Utf16Range{5, 0};
    EXPECT_FALSE(ElementReading::copySelectedTextRange(*element));
    element->selectionRange = Utf16Range{5, 1};
    EXPECT_EQ(ElementReading::copySelectedTextRange(*element), (Utf16Range{5, 1}));
}

TEST(CopyText, TakesTheValueBeforeTheTitle) {
    const auto element = FakeElement::make();
    EXPECT_FALSE(ElementReading::copyText(*element));
    element->titleText = "标题";
    EXPECT_EQ(ElementReading::copyText(*element), "标题");
    element->valueText = "";
    EXPECT_EQ(ElementReading::copyText(*element), "标题");
    element->valueText = "值";
    EXPECT_EQ(ElementReading::copyText(*element), "值");
    element->valueText = std::nullopt;
    element->titleText = "";
    EXPECT_FALSE(ElementReading::copyText(*element));
}

TEST(CopyText, LeavesLongTextsAlone) {
    const auto element = FakeElement::make();
    std::string text;
    for (int count = 0; count < 20'000; ++count) {
        text += "\U00020000";
    }
    element->valueText = text;
    EXPECT_EQ(ElementReading::copyText(*element), text);
    element->valueText = text + "a";
    EXPECT_FALSE(ElementReading::copyText(*element));
    element->valueText = std::string(200'000'000, 'a');
    element->titleText = "标题";
    EXPECT_FALSE(ElementReading::copyText(*element));
    element->valueText = std::nullopt;
    element->longLength = 30'000;
    EXPECT_FALSE(ElementReading::copyText(*element)) << "the title is not that text";
    element->longLength = std::nullopt;
    element->titleText = std::string(20'001, 'a');
    EXPECT_FALSE(ElementReading::copyText(*element));
}

TEST(BoundsForElement, NeedBothReadsAndAnArea) {
    const auto element = FakeElement::make();
    EXPECT_FALSE(ElementReading::boundsForElement(*element));
    element->origin = Point{1, 2};
    EXPECT_FALSE(ElementReading::boundsForElement(*element));
    element->extent = Size{3, 4};
    EXPECT_EQ(ElementReading::boundsForElement(*element), (Rect{1, 2, 3, 4}));
    element->extent = Size{0, 4};
    EXPECT_FALSE(ElementReading::boundsForElement(*element));
    element->extent = Size{3, -4};
    EXPECT_FALSE(ElementReading::boundsForElement(*element));
    element->extent = Size{std::numeric_limits<double>::infinity(), 4};
    EXPECT_FALSE(ElementReading::boundsForElement(*element));
}

TEST(BoundsForRange, RefusesWhatIsNotFinite) {
    const auto element = FakeElement::make();
    Rect bounds{1, 2, -3, 0};
    element->onBoundsForRange = [&](Utf16Range) { return bounds; };
    EXPECT_EQ(ElementReading::boundsForRange({0, 1}, *element), bounds);
    bounds.x = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(ElementReading::boundsForRange({0, 1}, *element));
    bounds.x = -std::numeric_limits<double>::infinity();
    EXPECT_FALSE(ElementReading::boundsForRange({0, 1}, *element));
}

TEST(ReferenceSources, HoldEachTextOnceWithItsFirstElement) {
    const auto elements = chain(4);
    elements[0]->valueText = "甲";
    elements[1]->titleText = "乙";
    elements[2]->titleText = "甲";
    const auto sources =
        ElementReading::referenceSources(ElementReading::candidateElements(elements[0]));
    ASSERT_EQ(sources.size(), 2U);
    EXPECT_EQ(sources[0].text, "甲");
    EXPECT_EQ(sources[0].element, elements[0]);
    EXPECT_EQ(sources[1].text, "乙");
}

TEST(CharacterRangeBounds, CountsUtf16Units) {
    const auto element = FakeElement::line("\U0001F600中文", {0, 0}, {10, 20});
    const CharacterText text("\U0001F600中文");
    EXPECT_EQ(ElementCharacters::characterRangeBounds(*element, text, 1, 3), (Rect{20, 0, 20, 20}));
    EXPECT_EQ(element->boundsRead.back(), (Utf16Range{2, 2}));
    EXPECT_EQ(ElementCharacters::characterRangeBounds(*element, text, 0, 1), (Rect{0, 0, 20, 20}));
}

TEST(CharacterRangeBounds, NeedARangeOfTheTextAndAnArea) {
    const auto element = FakeElement::line("中文", {0, 0}, {10, 20});
    const CharacterText text("中文");
    EXPECT_FALSE(ElementCharacters::characterRangeBounds(*element, text, -1, 1));
    EXPECT_FALSE(ElementCharacters::characterRangeBounds(*element, text, 0, 3));
    EXPECT_FALSE(ElementCharacters::characterRangeBounds(*element, text, 3, 4));
    EXPECT_FALSE(ElementCharacters::characterRangeBounds(*element, text, 1, 1));
    EXPECT_FALSE(ElementCharacters::characterRangeBounds(*element, text, 1, 0));
    EXPECT_TRUE(element->boundsRead.empty());
    element->onBoundsForRange = [](Utf16Range) { return Rect{0, 0, 0, 20}; };
    EXPECT_FALSE(ElementCharacters::characterRangeBounds(*element, text, 0, 1));
}

TEST(RefinedOffset, SearchesOutwardsLeftBeforeRight) {
    const CharacterText text("一二三四五六七八九十一二三四五六七八九十");
    const auto element = FakeElement::make();
    element->onBoundsForRange = [](Utf16Range) { return std::nullopt; };
    EXPECT_FALSE(ElementCharacters::refinedCharacterOffset(*element, text, 10, {0, 0}));
    ASSERT_EQ(element->boundsRead.size(), 17U);
    EXPECT_EQ(element->boundsRead[0].location, 10);
    EXPECT_EQ(element->boundsRead[1].location, 9);
    EXPECT_EQ(element->boundsRead[2].location, 11);
    EXPECT_EQ(element->boundsRead[15].location, 2);
    EXPECT_EQ(element->boundsRead[16].location, 18);
}

TEST(RefinedOffset, StopsAtTheFirstCharacterThatContainsThePoint) {
    const std::string line = "一二三四五六七八九十一二三四五六七八九十";
    const CharacterText text(line);
    const auto element = FakeElement::line(line, {0, 0}, {20, 20});
    EXPECT_EQ(ElementCharacters::refinedCharacterOffset(*element, text, 10, {185, 10}), 9);
    EXPECT_EQ(element->boundsRead.size(), 2U);
    EXPECT_EQ(ElementCharacters::refinedCharacterOffset(*element, text, 10, {45, 10}), 2);
    EXPECT_EQ(ElementCharacters::refinedCharacterOffset(*element, text, 10, {365, 10}), 18);
    EXPECT_FALSE(ElementCharacters::refinedCharacterOffset(*element, text, 10, {385, 10}))
        << "nine away";
}

TEST(RefinedOffset, AsksOnlyForChineseCharactersOfTheText) {
    const CharacterText text("a中b");
    const auto element = FakeElement::make();
    element->onBoundsForRange = [](Utf16Range) { return std::nullopt; };
    EXPECT_FALSE(ElementCharacters::refinedCharacterOffset(*element, text, 0, {0, 0}));
    ASSERT_EQ(element->boundsRead.size(), 1U);
    EXPECT_EQ(element->boundsRead[0].location, 1);
}

TEST(RefinedOffset, DoesNotTakeBoundsBesideThePoint) {
    const auto element = FakeElement::make();
    // A direct hit with its tolerance, but the point is not inside.
    element->onBoundsForRange = [](Utf16Range) { return Rect{0, 0, 20, 20}; };
    EXPECT_FALSE(
        ElementCharacters::refinedCharacterOffset(*element, CharacterText("中"), 0, {21, 10}));
    EXPECT_EQ(ElementCharacters::refinedCharacterOffset(*element, CharacterText("中"), 0, {19, 10}),
              0);
    element->onBoundsForRange = [](Utf16Range) { return Rect{0, 0, 151, 20}; };
    EXPECT_FALSE(
        ElementCharacters::refinedCharacterOffset(*element, CharacterText("中"), 0, {19, 10}));
}

}  // namespace
}  // namespace velmora
