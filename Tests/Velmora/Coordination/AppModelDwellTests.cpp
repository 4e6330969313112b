// SPDX-License-Identifier: MIT
// Which dwells and which answers count.
#include <gtest/gtest.h>

#include "Tests/Velmora/Coordination/LookupTest.h"

namespace velmora {
namespace {

using testing::here;
using testing::Journal;

struct DwellTest : testing::LookupTest {};

TEST_F(DwellTest, OfTwoDwellsOnlyTheSecondPresents) {
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

TEST_F(DwellTest, AnAnswerAfterTheModelIsDropped) {
    restAt(here);
    model.reset();
    answer(0, hovered("中国", 0));
    EXPECT_TRUE(journal.empty());
}

TEST_F(DwellTest, ADismissalMakesThePendingAnswerStale) {
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

TEST_F(DwellTest, ThePanelIsExcludedFromCaptures) {
    showPinyin();
    const auto frame = popover.frame;
    restAt({505, 500});
    ASSERT_EQ(extractor.asked.size(), 2U);
    EXPECT_EQ(extractor.asked[1].excluding, (std::vector<Rect>{*frame}));
}

TEST_F(DwellTest, ADwellWhileTheMenuIsOpenDoesNothing) {
    model->setStatusMenuOpen(true);
    restAt(here);
    EXPECT_TRUE(extractor.asked.empty());
    EXPECT_EQ(model->hoverStatus(), "Hover lookup ready");
    model->setStatusMenuOpen(false);
    restAt({510, 500});
    EXPECT_EQ(extractor.asked.size(), 1U);
}

TEST_F(DwellTest, ADwellInTheTop40PointsDoesNothing) {
    restAt({500, 960});
    restAt({500, 1000});
    EXPECT_TRUE(extractor.asked.empty());
    restAt({500, 959});
    EXPECT_EQ(extractor.asked.size(), 1U);
}

TEST_F(DwellTest, ADwellOnTheDictionaryDoesNothing) {
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

TEST_F(DwellTest, ADwellOnThePinyinBubbleIsOneLikeAnyOther) {
    showPinyin();
    // Within both the word's surroundings and the bubble.
    const Rect bubble = *popover.frame;
    restAt({bubble.midX(), bubble.minY()});
    EXPECT_EQ(extractor.asked.size(), 2U);
}

TEST_F(DwellTest, ADwellWhileDisabledOnlySaysSo) {
    model->setHoverLookupEnabled(false);
    model->handleDwell(here, {});
    EXPECT_EQ(model->hoverStatus(), "Hover lookup off");
    EXPECT_EQ(model->lastHoverStatus(), "No hover attempts yet");
    EXPECT_TRUE(extractor.asked.empty());
}

TEST_F(DwellTest, ADwellAfterTheGrantWentStopsWatching) {
    showPinyin();
    permissions.accessibility = false;
    restAt({505, 500});
    expectStatuses("Accessibility permission needed");
    EXPECT_TRUE(events.monitors.empty());
    expectNothingShown();
    EXPECT_EQ(extractor.asked.size(), 1U);
}

}  // namespace
}  // namespace velmora
