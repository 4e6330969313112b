// SPDX-License-Identifier: MIT
// From a dwell to what is shown, and to its end.
#include <gtest/gtest.h>

#include <limits>

#include "Tests/Velmora/Coordination/ModelWorld.h"

namespace velmora {
namespace {

using testing::Journal;
using testing::ModelWorld;
using Captured = testing::RecordedAnalytics::Captured;
using Taken = testing::RecordedLookups::Taken;
using std::string;

constexpr Point here{500, 500};

struct LookupTest : ::testing::Test, ModelWorld {
    void SetUp() override { startHovering(); }

    void expectStatuses(const string& text) {
        EXPECT_EQ(model->hoverStatus(), text);
        EXPECT_EQ(model->lastHoverStatus(), text);
    }
    void expectNothingShown() {
        EXPECT_EQ(popover.frame, std::nullopt);
        EXPECT_EQ(highlight.shown, std::nullopt);
        EXPECT_FALSE(model->currentLookupPresentation().has_value());
    }
    void showPinyin() {
        restAt(here);
        answerLast(hovered("我知道", 1));
    }
    void showDictionary() {
        events.flags = {ModifierFlags::shift};
        restAt(here);
        answerLast(hovered("我知道", 1));
        events.flags = {};
    }
};

TEST_F(LookupTest, ADwellAsksAndTheAnswerShowsPinyin) {
    restAt(here);
    ASSERT_EQ(extractor.asked.size(), 1U);
    EXPECT_EQ(extractor.asked[0].point, here);
    EXPECT_TRUE(extractor.asked[0].excluding.empty());
    answerLast(hovered("我知道", 1));
    EXPECT_EQ(journal, (Journal{"pinyin zhī dào"}));
    expectStatuses("Showing pinyin for 知道");
    EXPECT_EQ(highlight.shown, wordRect);
    EXPECT_EQ(popover.lastAnchor, wordRect);
    EXPECT_EQ(model->currentLookupPresentation()->mode, LookupPresentationMode::pinyin);
    EXPECT_EQ(lookups.records, (std::vector<Taken>{{"lookup", here, "我知道", "知道", 0, wordRect,
                                                    "pinyin", std::nullopt}}));
    EXPECT_EQ(analytics.captured, (std::vector<Captured>{{AnalyticsEvent::lookupPresented,
                                                          {{"mode", string("pinyin")},
                                                           {"result_count", std::int64_t{1}},
                                                           {"source", string("hovered_text")}}}}));
    EXPECT_TRUE(speech.spoken.empty());
}

TEST_F(LookupTest, WithShiftItShowsTheDictionary) {
    model->setPopoverFontScale(1.2);
    model->setToneColorsEnabled(false);
    showDictionary();
    EXPECT_EQ(journal, (Journal{"dictionary 知道"}));
    expectStatuses("Showing dictionary for 知道");
    EXPECT_EQ(popover.scale, 1.2);
    EXPECT_FALSE(popover.toneColors);
    EXPECT_EQ(lookups.records[0].mode, "dictionary");
    EXPECT_EQ(analytics.captured[0].properties.at("mode"), AnalyticsValue(string("dictionary")));
}

TEST_F(LookupTest, CapsLockIsNotShift) {
    events.flags = {ModifierFlags::capsLock};
    restAt(here);
    answerLast(hovered("知道", 0));
    EXPECT_EQ(journal, (Journal{"pinyin zhī dào"}));
}

TEST_F(LookupTest, NoTextSaysSoAndHides) {
    showPinyin();
    lookups.records.clear();
    restAt({510, 500});
    answerLast(std::nullopt);
    expectStatuses("No readable text under cursor");
    expectNothingShown();
    EXPECT_EQ(lookups.records, (std::vector<Taken>{{"no_text",
                                                    {510, 500},
                                                    std::nullopt,
                                                    std::nullopt,
                                                    0,
                                                    std::nullopt,
                                                    std::nullopt,
                                                    "no readable text under cursor"}}));
}

TEST_F(LookupTest, NoMatchSaysSoAndHides) {
    showPinyin();
    lookups.records.clear();
    restAt({510, 500});
    answerLast(hovered("latin", 0));
    expectStatuses("No dictionary match under cursor");
    expectNothingShown();
    EXPECT_EQ(lookups.records, (std::vector<Taken>{{"no_match",
                                                    {510, 500},
                                                    "latin",
                                                    std::nullopt,
                                                    0,
                                                    characterRect,
                                                    std::nullopt,
                                                    "no dictionary match under cursor"}}));
}

TEST_F(LookupTest, ASingleCharacterIsOutlinedByItsOwnRectangle) {
    restAt(here);
    answerLast(hovered("人", 0));
    EXPECT_EQ(highlight.shown, characterRect);
    EXPECT_EQ(popover.lastAnchor, characterRect);
}

TEST_F(LookupTest, AWordWithoutItsRectangleIsOutlinedByTheCharacter) {
    TextProbe probe = hovered("知道", 0);
    probe.rangeAnchorRect = [](long long, long long) { return std::nullopt; };
    restAt(here);
    answerLast(probe);
    EXPECT_EQ(highlight.shown, characterRect);
    probe.rangeAnchorRect = {};
    restAt({510, 500});
    answerLast(probe);
    EXPECT_EQ(highlight.shown, characterRect);
}

TEST_F(LookupTest, TheWordsRangeIsAskedFor) {
    TextProbe probe = hovered("我知道", 2);
    std::pair<long long, long long> asked;
    probe.rangeAnchorRect = [&](long long start, long long end) {
        asked = {start, end};
        return wordRect;
    };
    restAt(here);
    answerLast(probe);
    EXPECT_EQ(asked, (std::pair<long long, long long>{1, 3}));
}

TEST_F(LookupTest, WithoutAnyPlaceTheAnchorIsThePointer) {
    TextProbe probe = hovered("知道", 0);
    probe.anchorRect.reset();
    probe.rangeAnchorRect = {};
    showPinyin();
    restAt({510, 500});
    answerLast(probe);
    EXPECT_EQ(highlight.shown, std::nullopt);
    EXPECT_EQ(popover.lastAnchor, (Rect{510, 500, 1, 1}));
    EXPECT_EQ(lookups.records.back().anchorRect, (Rect{510, 500, 1, 1}));
}

TEST_F(LookupTest, RectanglesThatAreNoNumbersAreNone) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    TextProbe probe = hovered("知道", 0);
    probe.rangeAnchorRect = [nan](long long, long long) { return Rect{nan, 0, 1, 1}; };
    restAt(here);
    answerLast(probe);
    EXPECT_EQ(highlight.shown, characterRect);
    probe.anchorRect = Rect{0, 0, std::numeric_limits<double>::infinity(), 1};
    restAt({510, 500});
    answerLast(probe);
    EXPECT_EQ(highlight.shown, std::nullopt);
}

TEST_F(LookupTest, ASelectionShowsThePinyinOfItsWords) {
    restAt(here);
    answerLast(selected("中国人知道"));
    EXPECT_EQ(journal, (Journal{"pinyin Zhōng guó   rén   zhī dào"}));
    expectStatuses("Showing pinyin for 3 selected words");
    EXPECT_EQ(highlight.shown, (Rect{400, 480, 200, 30}));
    EXPECT_EQ(lookups.records[0], (Taken{"lookup", here, "中国人知道", "中国", 3,
                                         Rect{400, 480, 200, 30}, "pinyin", std::nullopt}));
    EXPECT_EQ(analytics.captured[0].properties.at("source"),
              AnalyticsValue(string("selected_text")));
    EXPECT_EQ(analytics.captured[0].properties.at("result_count"), AnalyticsValue(std::int64_t{3}));
}

TEST_F(LookupTest, ASelectionOfOneWordIsSingular) {
    restAt(here);
    answerLast(selected("知道"));
    expectStatuses("Showing pinyin for 1 selected word");
    setShift(true);
    expectStatuses("Showing 1 selected lookup");
}

TEST_F(LookupTest, ASelectionWithShiftListsItsWords) {
    model->setAutoPronounce(true);
    events.flags = {ModifierFlags::shift};
    restAt(here);
    answerLast(selected("中国人"));
    EXPECT_EQ(journal, (Journal{"selection 中国 人"}));
    expectStatuses("Showing 2 selected lookups");
    EXPECT_EQ(speech.spoken, (std::vector<string>{"中国"}));
}

TEST_F(LookupTest, ASelectionWithoutAPlaceHidesTheOutline) {
    showPinyin();
    TextProbe probe = selected("中国");
    probe.anchorRect.reset();
    restAt({510, 500});
    answerLast(probe);
    EXPECT_EQ(highlight.shown, std::nullopt);
    EXPECT_EQ(popover.lastAnchor, (Rect{510, 500, 1, 1}));
}

TEST_F(LookupTest, ASelectionWithoutWordsSaysSo) {
    showPinyin();
    lookups.records.clear();
    restAt({510, 500});
    answerLast(selected("齉齉"));
    expectStatuses("No dictionary matches in selection");
    expectNothingShown();
    EXPECT_EQ(lookups.records[0].reason, "no dictionary matches in selection");
    EXPECT_EQ(lookups.records[0].event, "no_match");
    EXPECT_EQ(lookups.records[0].anchorRect, (Rect{400, 480, 200, 30}));
}

TEST_F(LookupTest, AWordWithoutPinyinShowsNoBubble) {
    showPinyin();
    journal.clear();
    analytics.captured.clear();
    restAt({510, 500});
    answerLast(hovered("空", 0));
    EXPECT_EQ(journal, (Journal{"panel out"}));
    expectNothingShown();
    EXPECT_TRUE(analytics.captured.empty());
    EXPECT_EQ(model->recentLookups().size(), 1U);
}

TEST_F(LookupTest, AutoPronounceSpeaksHoveredWordsInDictionaryModeOnly) {
    model->setAutoPronounce(true);
    showPinyin();
    EXPECT_TRUE(speech.spoken.empty());
    model->dismissLookupPresentation();
    moveTo({800, 800});
    showDictionary();
    EXPECT_EQ(speech.spoken, (std::vector<string>{"知道"}));
}

TEST_F(LookupTest, OfTwoDwellsOnlyTheSecondPresents) {
    restAt(here);
    restAt({600, 500});
    ASSERT_EQ(extractor.asked.size(), 2U);
    answer(0, hovered("中国", 0));
    EXPECT_TRUE(journal.empty());
    EXPECT_EQ(model->lastHoverStatus(), "No hover attempts yet");
    answer(1, hovered("知道", 0));
    EXPECT_EQ(journal, (Journal{"pinyin zhī dào"}));
    answer(0, hovered("中国", 0));
    EXPECT_EQ(journal.size(), 1U);
}

TEST_F(LookupTest, AnAnswerAfterTheModelIsDropped) {
    restAt(here);
    model.reset();
    answer(0, hovered("中国", 0));
    EXPECT_TRUE(journal.empty());
}

TEST_F(LookupTest, ADismissalMakesThePendingAnswerStale) {
    showPinyin();
    restAt({505, 500});
    ASSERT_EQ(extractor.asked.size(), 2U);
    moveTo({900, 500});
    expectNothingShown();
    answer(1, hovered("中国", 0));
    expectNothingShown();
    EXPECT_EQ(model->hoverStatus(), "Hover lookup ready");
    EXPECT_EQ(model->lastHoverStatus(), "Showing pinyin for 知道");
}

TEST_F(LookupTest, ThePanelIsExcludedFromCaptures) {
    showPinyin();
    const auto frame = popover.frame;
    restAt({505, 500});
    ASSERT_EQ(extractor.asked.size(), 2U);
    EXPECT_EQ(extractor.asked[1].excluding, (std::vector<Rect>{*frame}));
}

TEST_F(LookupTest, ADwellWhileTheMenuIsOpenDoesNothing) {
    model->setStatusMenuOpen(true);
    restAt(here);
    EXPECT_TRUE(extractor.asked.empty());
    EXPECT_EQ(model->hoverStatus(), "Hover lookup ready");
    model->setStatusMenuOpen(false);
    restAt({510, 500});
    EXPECT_EQ(extractor.asked.size(), 1U);
}

TEST_F(LookupTest, ADwellInTheTop40PointsDoesNothing) {
    restAt({500, 960});
    restAt({500, 1000});
    EXPECT_TRUE(extractor.asked.empty());
    restAt({500, 959});
    EXPECT_EQ(extractor.asked.size(), 1U);
}

TEST_F(LookupTest, ADwellOnTheDictionaryDoesNothing) {
    showDictionary();
    const Rect panel = *popover.frame;
    const auto status = model->hoverStatus();
    restAt({panel.midX(), panel.midY()});
    restAt({panel.minX() - 5.9, panel.midY()});
    EXPECT_EQ(extractor.asked.size(), 1U);
    EXPECT_EQ(model->hoverStatus(), status);
    restAt({panel.minX() - 10, panel.midY()});
    EXPECT_EQ(extractor.asked.size(), 2U);
}

TEST_F(LookupTest, ADwellOnThePinyinBubbleIsOneLikeAnyOther) {
    showPinyin();
    // Within both the word's surroundings and the bubble.
    const Rect bubble = *popover.frame;
    restAt({bubble.midX(), bubble.minY()});
    EXPECT_EQ(extractor.asked.size(), 2U);
}

TEST_F(LookupTest, ADwellWhileDisabledOnlySaysSo) {
    model->setHoverLookupEnabled(false);
    model->handleDwell(here, {});
    EXPECT_EQ(model->hoverStatus(), "Hover lookup off");
    EXPECT_EQ(model->lastHoverStatus(), "No hover attempts yet");
    EXPECT_TRUE(extractor.asked.empty());
}

TEST_F(LookupTest, ADwellAfterTheGrantWentStopsWatching) {
    showPinyin();
    permissions.accessibility = false;
    restAt({505, 500});
    expectStatuses("Accessibility permission needed");
    EXPECT_TRUE(events.monitors.empty());
    expectNothingShown();
    EXPECT_EQ(extractor.asked.size(), 1U);
}

TEST_F(LookupTest, ShiftTurnsTheBubbleIntoTheDictionary) {
    model->setAutoPronounce(true);
    showPinyin();
    journal.clear();
    setShift(true);
    EXPECT_EQ(journal, (Journal{"dictionary 知道"}));
    EXPECT_EQ(popover.lastAnchor, wordRect);
    expectStatuses("Showing dictionary for 知道");
    EXPECT_TRUE(speech.spoken.empty());
    EXPECT_EQ(lookups.records.size(), 1U);
    EXPECT_EQ(analytics.captured.size(), 2U);
    // Neither letting go nor pressing again changes anything.
    setShift(false);
    setShift(true);
    EXPECT_EQ(journal.size(), 1U);
    EXPECT_EQ(model->recentLookups().size(), 1U);
}

TEST_F(LookupTest, ShiftListsTheSelectionAndStaysSilent) {
    model->setAutoPronounce(true);
    restAt(here);
    answerLast(selected("中国人"));
    setShift(true);
    EXPECT_EQ(journal.back(), "selection 中国 人");
    expectStatuses("Showing 2 selected lookups");
    EXPECT_TRUE(speech.spoken.empty());
}

TEST_F(LookupTest, ShiftDoesNothingWithoutABubble) {
    setShift(true);
    EXPECT_TRUE(journal.empty());
    setShift(false);
    showPinyin();
    model->setStatusMenuOpen(true);
    setShift(true);
    EXPECT_EQ(journal.size(), 1U);
    model->setStatusMenuOpen(false);
    model->handleModifierFlagsChanged({ModifierFlags::control});
    EXPECT_EQ(journal.size(), 1U);
}

TEST_F(LookupTest, ThePinyinGoesAsSoonAsThePointerLeavesTheWord) {
    showPinyin();
    moveTo({wordRect.midX(), wordRect.maxY() + 17});
    EXPECT_TRUE(popover.frame.has_value());
    moveTo({wordRect.midX(), wordRect.maxY() + 21});  // Towards the bubble.
    expectNothingShown();
    EXPECT_EQ(model->hoverStatus(), "Hover lookup ready");
    EXPECT_EQ(model->lastHoverStatus(), "Showing pinyin for 知道");
}

TEST_F(LookupTest, TheDictionaryStaysWhileThePointerGoesThere) {
    showDictionary();
    const Rect panel = *popover.frame;
    moveTo({wordRect.midX(), wordRect.minY() - 5});
    moveTo({panel.midX(), panel.midY()});
    moveTo({panel.minX() - 17, panel.minY()});
    EXPECT_TRUE(popover.frame.has_value());
    moveTo({panel.minX() - 20, panel.minY()});
    expectNothingShown();
}

TEST_F(LookupTest, AMoveWithoutAVisiblePanelChangesNothing) {
    showPinyin();
    popover.frame.reset();
    moveTo({900, 500});
    EXPECT_TRUE(model->currentLookupPresentation().has_value());
}

TEST_F(LookupTest, AClickOutsideDismissesOneInsideDoesNot) {
    showDictionary();
    const Rect panel = *popover.frame;
    click({panel.minX() - 5.9, panel.midY()});
    EXPECT_TRUE(popover.frame.has_value());
    click({wordRect.midX(), wordRect.midY()});
    expectNothingShown();
}

TEST_F(LookupTest, AClickDismissesWhereNoPanelIsVisible) {
    showPinyin();
    popover.frame.reset();
    click(here);
    EXPECT_FALSE(model->currentLookupPresentation().has_value());
}

TEST_F(LookupTest, AClickWithoutAPresentationLeavesThePendingAnswerAlone) {
    restAt(here);
    click({900, 900});
    answer(0, hovered("知道", 0));
    EXPECT_EQ(journal, (Journal{"pinyin zhī dào"}));
}

TEST_F(LookupTest, SwitchingOffHidesEverything) {
    showDictionary();
    model->setHoverLookupEnabled(false);
    expectNothingShown();
    EXPECT_EQ(model->hoverStatus(), "Hover lookup off");
    model->dismissLookupPresentation();
    EXPECT_EQ(model->hoverStatus(), "Hover lookup off");
}

TEST_F(LookupTest, RecentsHoldEachWordOnce) {
    showPinyin();
    restAt({510, 500});
    answerLast(selected("中国人"));
    restAt({515, 500});
    answerLast(hovered("知道", 0));
    std::string all;
    for (const LookupResult& result : model->recentLookups()) {
        all += result.entry.simplified + " ";
    }
    EXPECT_EQ(all, "知道 中国 人 ");
}

TEST_F(LookupTest, NoEventCarriesLookedUpText) {
    showPinyin();
    setShift(true);
    restAt({510, 500});
    answerLast(selected("中国人"));
    for (const Captured& event : analytics.captured) {
        for (const auto& [name, value] : event.properties) {
            if (const auto* text = std::get_if<string>(&value)) {
                EXPECT_TRUE(std::all_of(text->begin(), text->end(), [](char c) { return c > 0; }))
                    << name;
            }
        }
    }
}

TEST_F(LookupTest, AWholeDay) {
    // Morning: reading, word by word.
    for (int i = 0; i < 50; ++i) {
        restAt({100.0 + i * 10, 700});
        answerLast(hovered(i % 2 == 0 ? "我知道" : "中国人", 1));
    }
    EXPECT_EQ(model->recentLookups().size(), 2U);
    // A quick hand: fifty dwells whose answers come late and out of order.
    const std::size_t first = extractor.asked.size();
    for (int i = 0; i < 50; ++i) {
        restAt({100.0 + i * 10, 400});
    }
    journal.clear();
    for (std::size_t i = extractor.asked.size(); i-- > first;) {
        answer(i, hovered("人", 0));
    }
    EXPECT_EQ(journal, (Journal{"pinyin rén"}));
    // Noon: the menu, the grant lost and found again.
    model->setStatusMenuOpen(true);
    model->refreshPermissions();
    model->setStatusMenuOpen(false);
    permissions.accessibility = false;
    restAt({300, 300});
    EXPECT_EQ(model->hoverStatus(), "Accessibility permission needed");
    permissions.accessibility = true;
    model->refreshPermissions();
    EXPECT_EQ(model->hoverStatus(), "Hover lookup ready");
    // Evening: Shift before, during and after.
    setShift(true);
    restAt({320, 300});
    answerLast(hovered("知道", 0));
    setShift(false);
    EXPECT_EQ(model->currentLookupPresentation()->mode, LookupPresentationMode::dictionary);
    click({1500, 20});
    restAt({500, 505});
    answerLast(hovered("知道", 1));
    EXPECT_EQ(model->currentLookupPresentation()->mode, LookupPresentationMode::pinyin);
    setShift(true);
    EXPECT_EQ(model->currentLookupPresentation()->mode, LookupPresentationMode::dictionary);
    setShift(false);
    model->setHoverLookupEnabled(false);
    expectNothingShown();
    EXPECT_TRUE(events.monitors.empty());
    EXPECT_EQ(clock.pendingTimers(), 0U);
}

}  // namespace
}  // namespace velmora
