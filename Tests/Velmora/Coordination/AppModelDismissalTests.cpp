// SPDX-License-Identifier: MIT
// From the bubble to the dictionary, and to the end of both.
#include <gtest/gtest.h>

#include "Tests/Velmora/Coordination/LookupTest.h"

namespace velmora {
namespace {

using testing::here;
using testing::Journal;
using Captured = testing::RecordedAnalytics::Captured;
using std::string;

struct DismissalTest : testing::LookupTest {};

TEST_F(DismissalTest, ShiftTurnsTheBubbleIntoTheDictionary) {
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

TEST_F(DismissalTest, ShiftListsTheSelectionAndStaysSilent) {
    model->setAutoPronounce(true);
    restAt(here);
    answerLast(selected("中国人"));
    setShift(true);
    EXPECT_EQ(journal.back(), "selection 中国 人");
    expectStatuses("Showing 2 selected lookups");
    EXPECT_TRUE(speech.spoken.empty());
}

TEST_F(DismissalTest, ShiftDoesNothingWithoutABubble) {
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

TEST_F(DismissalTest, ThePinyinGoesAsSoonAsThePointerLeavesTheWord) {
    showPinyin();
    moveTo({wordRect.midX(), wordRect.maxY() + 17});
    EXPECT_TRUE(popover.frame.has_value());
    moveTo({wordRect.midX(), wordRect.maxY() + 21});  // Towards the bubble.
    expectNothingShown();
    EXPECT_EQ(model->hoverStatus(), "Hover lookup ready");
    EXPECT_EQ(model->lastHoverStatus(), "Showing pinyin for 知道");
}

TEST_F(DismissalTest, TheDictionaryStaysWhileThePointerGoesThere) {
    showDictionary();
    const Rect panel = *popover.frame;
    moveTo({wordRect.midX(), wordRect.minY() - 5});
    moveTo({panel.midX(), panel.midY()});
    moveTo({panel.minX() - 17, panel.minY()});
    EXPECT_TRUE(popover.frame.has_value());
    moveTo({panel.minX() - 20, panel.minY()});
    expectNothingShown();
}

TEST_F(DismissalTest, AMoveWithoutAVisiblePanelChangesNothing) {
    showPinyin();
    popover.frame.reset();
    moveTo({900, 500});
    EXPECT_TRUE(model->currentLookupPresentation().has_value());
}

TEST_F(DismissalTest, AClickOutsideDismissesOneInsideDoesNot) {
    showDictionary();
    const Rect panel = *popover.frame;
    click({panel.minX() - 5.9, panel.midY()});
    EXPECT_TRUE(popover.frame.has_value());
    click({wordRect.midX(), wordRect.midY()});
    expectNothingShown();
}

TEST_F(DismissalTest, AClickDismissesWhereNoPanelIsVisible) {
    showPinyin();
    popover.frame.reset();
    click(here);
    EXPECT_FALSE(model->currentLookupPresentation().has_value());
}

TEST_F(DismissalTest, AClickWithoutAPresentationLeavesThePendingAnswerAlone) {
    restAt(here);
    click({900, 900});
    answer(0, hovered("知道", 0));
    EXPECT_EQ(journal, (Journal{"pinyin zhī dào"}));
}

TEST_F(DismissalTest, SwitchingOffHidesEverything) {
    showDictionary();
    model->setHoverLookupEnabled(false);
    expectNothingShown();
    EXPECT_EQ(model->hoverStatus(), "Hover lookup off");
    model->dismissLookupPresentation();
    EXPECT_EQ(model->hoverStatus(), "Hover lookup off");
}

TEST_F(DismissalTest, RecentsHoldEachWordOnce) {
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

TEST_F(DismissalTest, NoEventCarriesLookedUpText) {
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

TEST_F(DismissalTest, AWholeDay) {
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
