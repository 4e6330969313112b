// SPDX-License-Identifier: MIT
// From a dwell to what is shown.
#include <gtest/gtest.h>

#include <limits>

#include "Tests/Velmora/Coordination/LookupTest.h"

namespace velmora {
namespace {

using testing::here;
using testing::Journal;
using Captured = testing::RecordedAnalytics::Captured;
using Taken = testing::RecordedLookups::Taken;
using std::string;

using testing::LookupTest;

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

}  // namespace
}  // namespace velmora
