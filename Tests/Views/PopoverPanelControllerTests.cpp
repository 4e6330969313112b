// SPDX-License-Identifier: MIT
#include <QFont>
#include <QGuiApplication>
#include <limits>
#include <string>

#include "Tests/Views/SampleEntries.h"
#include "Tests/Views/ViewTest.h"

namespace velmora::test {

namespace {

class PopoverPanelControllerTest : public ViewTest {
  protected:
    Rect panelFrame() { return popover.visiblePanelFrame().value_or(Rect{}); }
};

TEST_F(PopoverPanelControllerTest, HasNoPanelBeforeTheFirstShow) {
    EXPECT_EQ(popover.panel(), nullptr);
    EXPECT_FALSE(popover.visiblePanelFrame().has_value());
    popover.orderOut();
    popover.show({}, std::nullopt, anchor, true, 1);
    EXPECT_EQ(popover.panel(), nullptr);
}

TEST_F(PopoverPanelControllerTest, OnePanelServesEveryShow) {
    popover.showPinyin("xué xí", anchor, 1);
    const PanelWindow* first = popover.panel();
    showEntry(samples::study());
    showSelection(samples::words(3), "学习");
    EXPECT_EQ(popover.panel(), first);
    popover.orderOut();
    EXPECT_EQ(popover.panel(), first);
    EXPECT_FALSE(first->isVisible());
}

TEST_F(PopoverPanelControllerTest, NoResultsHideTheVisiblePanel) {
    showEntry(samples::study());
    ASSERT_TRUE(popover.visiblePanelFrame().has_value());
    popover.show({}, "学习", anchor, true, 1);
    EXPECT_FALSE(popover.visiblePanelFrame().has_value());
}

TEST_F(PopoverPanelControllerTest, EntryStandsTenPointsUnderTheAnchor) {
    showEntry(samples::study());
    EXPECT_EQ(panelFrame().maxY(), anchor.minY() - 10);
    EXPECT_EQ(panelFrame().midX(), anchor.midX());
    EXPECT_EQ(panelFrame().width, 360);
}

TEST_F(PopoverPanelControllerTest, BubbleStandsSixteenPointsOverTheAnchor) {
    popover.showPinyin("xué xí", anchor, 1);
    EXPECT_EQ(panelFrame().minY(), anchor.maxY() + 16);
    EXPECT_NEAR(panelFrame().midX(), anchor.midX(), 0.5);
}

TEST_F(PopoverPanelControllerTest, ShortEntryIsRaisedAndLongOneLoweredInHeight) {
    showEntry(samples::water());
    EXPECT_LT(view().implicitHeight(), 180);
    EXPECT_EQ(panelFrame().height, 180);
    EXPECT_EQ(view().height(), 180);
    showEntry(samples::manySenses());
    EXPECT_GT(view().implicitHeight(), 360);
    EXPECT_EQ(panelFrame().height, 360);
    EXPECT_EQ(panelFrame().width, 360);
}

TEST_F(PopoverPanelControllerTest, BubbleKeepsItsBounds) {
    popover.showPinyin("è", anchor, 0.7);
    EXPECT_EQ(panelFrame().size(), (Size{56, 32}));
    popover.showPinyin("Zhōng huá Rén mín Gòng hé guó   xué xí", anchor, 1.5);
    EXPECT_EQ(panelFrame().width, 260);
    EXPECT_LE(panelFrame().height, 48);
    EXPECT_TRUE(item("pinyin").property("truncated").toBool());
    EXPECT_EQ(item("pinyin").property("lineCount").toInt(), 1);
    EXPECT_EQ(item("pinyin").width(), 260 - 2 * 12);
}

TEST_F(PopoverPanelControllerTest, BubbleIsPaddedTwelveAndSeven) {
    popover.showPinyin("xué xí", anchor, 1);
    QQuickItem& label = item("pinyin");
    EXPECT_EQ(label.property("font").value<QFont>().weight(), QFont::DemiBold);
    EXPECT_NEAR(label.property("font").value<QFont>().pointSizeF() * 96 / 72, 15, 1e-9);
    EXPECT_EQ(view().implicitWidth(), label.implicitWidth() + 24);
    EXPECT_EQ(view().implicitHeight(), 18 + 14);
    EXPECT_EQ(frame(label).center().y(), panelFrame().height / 2);
    EXPECT_EQ(view().property("cornerRadius").toDouble(), panelFrame().height / 2);
}

TEST_F(PopoverPanelControllerTest, ShowsTheFirstOfSeveralResults) {
    popover.show({samples::water(), samples::study()}, std::nullopt, anchor, true, 1);
    EXPECT_EQ(item("pinyin").property("text").toString(), QStringLiteral("shuǐ"));
}

TEST_F(PopoverPanelControllerTest, StateOfAnEarlierShowIsGone) {
    showEntry(samples::study());
    const QQuickItem* first = &view();
    showEntry(samples::study());
    EXPECT_NE(&view(), first);
}

TEST_F(PopoverPanelControllerTest, ImpossibleValuesAreRefused) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    showEntry(samples::study(), nan);
    EXPECT_EQ(item("headword").property("fontSize").toDouble(), 30);
    popover.showPinyin("xué xí", {nan, 0, 10, 10}, 1);
    EXPECT_FALSE(popover.visiblePanelFrame().has_value());
}

TEST_F(PopoverPanelControllerTest, AnchorOnTheSecondScreenOfTwo) {
    const double ratio = qGuiApp->devicePixelRatio();
    screens.set(
        {{1,
          {1600 * ratio, 0, 1600 * ratio, 1000 * ratio},
          ratio,
          {1600 * ratio, 0, 1600 * ratio, 1000 * ratio}},
         {2, {0, 0, 1600 * ratio, 1000 * ratio}, ratio, {0, 0, 1600 * ratio, 900 * ratio}}});
    // Left of the primary screen, 40 points over the work area's lower edge.
    const Rect second = screens.current().screens()[1].frame;
    ASSERT_LT(second.maxX(), 1);
    popover.show({samples::study()}, std::nullopt, {second.midX() - 30, 140, 60, 24}, true, 1);
    EXPECT_EQ(panelFrame().minY(), 140 + 24 + 10);
    EXPECT_EQ(panelFrame().midX(), second.midX());
}

TEST_F(PopoverPanelControllerTest, TellsWhenTheFrameIsPainted) {
    int painted = 0;
    popover.setFramePaintedObserver([&painted] { ++painted; });
    showEntry(samples::study());
    while (painted == 0) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 1000);
    }
    EXPECT_EQ(painted, 1);
}

TEST_F(PopoverPanelControllerTest, WarmingUpLeavesAHiddenPanelWithoutAView) {
    popover.warmUp();
    ASSERT_NE(popover.panel(), nullptr);
    EXPECT_FALSE(popover.panel()->isVisible());
    EXPECT_EQ(popover.panel()->view(), nullptr);
    EXPECT_FALSE(popover.visiblePanelFrame().has_value());
}

TEST_F(PopoverPanelControllerTest, WarmingUpLeavesAVisiblePanelAlone) {
    showEntry(samples::study());
    const QQuickItem* shown = &view();
    popover.warmUp();
    EXPECT_EQ(&view(), shown);
    EXPECT_TRUE(popover.visiblePanelFrame().has_value());
}

TEST_F(PopoverPanelControllerTest, AWordHoveredBetweenTheStepsOfWarmingUpIsShown) {
    const std::size_t count = popover.warmUpSteps().size();
    ASSERT_GT(count, 3U);
    for (std::size_t done = 0; done <= count; ++done) {
        PopoverPanelController fresh(speaker, screens, views);
        const auto steps = fresh.warmUpSteps();
        const auto run = [&steps](std::size_t from, std::size_t to) {
            for (std::size_t i = from; i < to; ++i) {
                steps[i]();
            }
        };
        run(0, done);
        fresh.show({samples::study()}, std::nullopt, anchor, true, 1);
        const QQuickItem* const shown = fresh.panel()->view();
        ASSERT_NE(shown, nullptr) << done;
        EXPECT_TRUE(fresh.panel()->isVisible()) << done;
        run(done, count);
        EXPECT_EQ(fresh.panel()->view(), shown) << done;
        EXPECT_TRUE(fresh.panel()->isVisible()) << done;
        fresh.orderOut();
    }
}

TEST_F(PopoverPanelControllerTest, AnAbsurdFontScaleStaysWithinTheBounds) {
    for (const double scale : {1e9, 1e300, 1e-9}) {
        showEntry(samples::study(), scale);
        EXPECT_LE(panel().width(), 390) << scale;
        EXPECT_LE(panel().height(), 360) << scale;
        EXPECT_GE(panel().width(), 320) << scale;
        EXPECT_GE(panel().height(), 180) << scale;
        // Letters that are larger than any screen would be laid out and drawn all the same.
        EXPECT_LE(view().property("fontScale").toDouble(), 4) << scale;
        EXPECT_GE(view().property("fontScale").toDouble(), 0.1) << scale;
        EXPECT_FALSE(panel().grabWindow().isNull());
        showSelection(samples::words(6), "学习", scale);
        EXPECT_FALSE(panel().grabWindow().isNull());
        popover.showPinyin("xué xí", anchor, scale);
        EXPECT_LE(panel().width(), 260) << scale;
        EXPECT_LE(panel().height(), 48) << scale;
        EXPECT_GE(panel().height(), 32) << scale;
    }
}

}  // namespace

}  // namespace velmora::test
