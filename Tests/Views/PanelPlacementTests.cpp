// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/PanelPlacement.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace velmora::test {

namespace {

/// 1600 × 1000 with a bar of 30 points at the top and a dock of 60 at the bottom.
const Screen primary{{0, 0, 1600, 1000}, {0, 60, 1600, 910}};
const Screen second{{1600, 200, 1280, 800}, {1600, 200, 1200, 800}};
constexpr Size card{360, 260};
constexpr Size bubble{110, 38};

TEST(PanelPlacement, CardStandsTenPointsUnderItsAnchorCentred) {
    EXPECT_EQ(origin(card, {700, 600, 60, 24}, Placement::below, {primary}), (Point{550, 330}));
}

TEST(PanelPlacement, BubbleStandsSixteenPointsOverItsAnchorCentred) {
    EXPECT_EQ(origin(bubble, {700, 600, 60, 24}, Placement::above, {primary}), (Point{675, 640}));
}

TEST(PanelPlacement, CardFlipsWhereItsLowerEdgeWouldReachTheWorkArea) {
    // lowY is exactly 60 here, the lower edge of the work area.
    EXPECT_EQ(origin(card, {700, 330, 60, 24}, Placement::below, {primary}).y, 330 + 24 + 10);
    EXPECT_EQ(origin(card, {700, 330.5, 60, 24}, Placement::below, {primary}).y, 60.5);
}

TEST(PanelPlacement, FlippedCardKeepsTwelvePointsUnderTheTop) {
    // An anchor so high that neither side has room.
    EXPECT_EQ(origin({360, 800}, {700, 500, 60, 24}, Placement::below, {primary}).y,
              970 - 800 - 12);
}

TEST(PanelPlacement, BubbleFlipsWhereItsUpperEdgeWouldReachTheWorkArea) {
    // y + height is exactly 970 here, the upper edge of the work area.
    EXPECT_EQ(origin(bubble, {700, 892, 60, 24}, Placement::above, {primary}).y, 892 - 38 - 10);
    EXPECT_EQ(origin(bubble, {700, 891.5, 60, 24}, Placement::above, {primary}).y, 931.5);
}

TEST(PanelPlacement, FlippedBubbleKeepsTwelvePointsOverTheBottom) {
    const Screen low{{0, 0, 1600, 100}, {0, 0, 1600, 100}};
    EXPECT_EQ(origin(bubble, {700, 30, 60, 60}, Placement::above, {low}).y, 12);
}

TEST(PanelPlacement, KeepsTwelvePointsFromBothSides) {
    EXPECT_EQ(origin(card, {5, 600, 20, 24}, Placement::below, {primary}).x, 12);
    EXPECT_EQ(origin(card, {1590, 600, 20, 24}, Placement::below, {primary}).x, 1600 - 360 - 12);
}

TEST(PanelPlacement, LeftMarginWinsWhereThePanelIsTooWide) {
    EXPECT_EQ(origin({1700, 100}, {700, 600, 60, 24}, Placement::below, {primary}).x, 12);
}

TEST(PanelPlacement, UsesTheWorkAreaOfTheAnchorsScreen) {
    EXPECT_EQ(origin(card, {2700, 600, 60, 24}, Placement::below, {primary, second}),
              (Point{2800 - 360 - 12, 330}));
    EXPECT_EQ(origin(card, {1700, 400, 60, 24}, Placement::below, {primary, second}),
              (Point{1612, 434}));
}

TEST(PanelPlacement, FirstScreenThatSharesAnAreaWins) {
    EXPECT_EQ(origin(card, {1580, 600, 60, 24}, Placement::below, {primary, second}).x,
              1600 - 360 - 12);
    // Touching edges share none.
    EXPECT_EQ(origin(card, {1600, 600, 60, 24}, Placement::below, {primary, second}).x, 1612);
}

TEST(PanelPlacement, AnchorOnNoScreenUsesTheMainOne) {
    EXPECT_EQ(origin(card, {-900, 600, 60, 24}, Placement::below, {primary, second}),
              (Point{12, 330}));
}

TEST(PanelPlacement, WithoutAScreenTheWorkAreaIsZero) {
    EXPECT_EQ(origin(card, {700, 600, 60, 24}, Placement::below, {}), (Point{12, 330}));
    EXPECT_EQ(origin(bubble, {700, 600, 60, 24}, Placement::above, {}), (Point{12, 552}));
    EXPECT_EQ(origin(card, {700, 100, 60, 24}, Placement::below, {}), (Point{12, -272}));
}

TEST(MeasuredSize, KeepsWhatFits) {
    EXPECT_EQ(measuredSize({360, 200}, {1, 1}, {320, 180}, {390, 360}), (Size{360, 200}));
}

TEST(MeasuredSize, RaisesAndLowersEachDimensionByItself) {
    EXPECT_EQ(measuredSize({300, 500}, {1, 1}, {320, 180}, {390, 360}), (Size{320, 360}));
    EXPECT_EQ(measuredSize({500, 90}, {1, 1}, {320, 180}, {390, 360}), (Size{390, 180}));
}

TEST(MeasuredSize, FallsBackWhereThereIsNoUsableLength) {
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double useless : {0.0, -5.0, infinity, -infinity, std::nan("")}) {
        EXPECT_EQ(measuredSize({useless, 200}, {360, 260}, {320, 180}, {390, 360}),
                  (Size{360, 200}));
        EXPECT_EQ(measuredSize({350, useless}, {360, 260}, {320, 180}, {390, 360}),
                  (Size{350, 260}));
    }
}

TEST(MeasuredSize, MaximumWinsWhereTheBoundsCross) {
    EXPECT_EQ(measuredSize({50, 50}, {1, 1}, {100, 100}, {80, 90}), (Size{80, 90}));
}

}  // namespace

}  // namespace velmora::test
