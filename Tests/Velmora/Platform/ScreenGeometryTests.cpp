// SPDX-License-Identifier: MIT
#include "Velmora/Platform/ScreenGeometry.h"

#include <gtest/gtest.h>

#include <limits>

namespace velmora {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// A screen without panels.
ScreenLayout bare(std::uint64_t id, const Rect& frame, double ratio = 1) {
    return {id, frame, ratio, frame};
}

/// The primary screen at the lower right of a wide one that stands at the corner of the desktop.
ScreenGeometry primaryAtLowerRight() {
    return ScreenGeometry({bare(1, {1920, 360, 1600, 900}), bare(2, {0, 0, 1920, 1080})});
}

/// A fine primary screen (two pixels a point), a coarse one to its right.
ScreenGeometry mixedRatios() {
    return ScreenGeometry({bare(1, {0, 0, 2560, 1440}, 2), bare(2, {2560, 200, 1920, 1080}, 1)});
}

/// The fine screen is the second one.
ScreenGeometry fineSecond() {
    return ScreenGeometry({bare(1, {0, 0, 1920, 1080}, 1), bare(2, {1920, 0, 3840, 2160}, 2)});
}

TEST(ScreenGeometry, OneScreenTurnsYAround) {
    const ScreenGeometry geometry({bare(1, {0, 0, 1600, 1000})});
    EXPECT_EQ(geometry.desktopHeight(), 1000);
    EXPECT_EQ(geometry.screenFromCapture(Point{10, 10}), (Point{10, 990}));
    EXPECT_EQ(geometry.screenFromCapture(Rect{5, 10, 20, 30}), (Rect{5, 960, 20, 30}));
    EXPECT_EQ(geometry.captureFromScreen(Rect{5, 960, 20, 30}), (Rect{5, 10, 20, 30}));
    EXPECT_EQ(geometry.screenFromNative(Point{0, 1000}), (Point{0, 0}));
    EXPECT_EQ(geometry.nativeFromScreen(Point{0, 1000}), (Point{0, 0}));
}

TEST(ScreenGeometry, OriginIsThePrimaryScreensWhereverItStands) {
    const ScreenGeometry geometry = primaryAtLowerRight();
    EXPECT_EQ(geometry.desktopHeight(), 900);
    EXPECT_EQ(geometry.captureFromNative(Point{1920, 360}), (Point{0, 0}));
    EXPECT_EQ(geometry.screenFromNative(Point{1920, 1260}), (Point{0, 0}));
    EXPECT_EQ(geometry.screenFromNative(Point{1920, 360}), (Point{0, 900}));
    EXPECT_EQ(geometry.captureFromNative(Point{0, 0}), (Point{-1920, -360}));
    EXPECT_EQ(geometry.screenFromNative(Point{0, 0}), (Point{-1920, 1260}));
    EXPECT_EQ(geometry.nativeFromScreen(Rect{-1920, 180, 100, 1080}), (Rect{0, 0, 100, 1080}));
    EXPECT_EQ(geometry.logicalFromScreen(Rect{10, 790, 50, 100}), (Rect{1930, 370, 50, 100}));
    EXPECT_EQ(geometry.screenFromLogical(Rect{1930, 370, 50, 100}), (Rect{10, 790, 50, 100}));
}

TEST(ScreenGeometry, ListsScreensAndDisplaysThePrimaryFirst) {
    const ScreenGeometry geometry = primaryAtLowerRight();
    const std::vector<Screen> screens = geometry.screens();
    ASSERT_EQ(screens.size(), 2U);
    EXPECT_EQ(screens[0].frame, (Rect{0, 0, 1600, 900}));
    EXPECT_EQ(screens[1].frame, (Rect{-1920, 180, 1920, 1080}));
    const std::vector<Display> displays = geometry.displays();
    ASSERT_EQ(displays.size(), 2U);
    EXPECT_EQ(displays[0], (Display{1, {0, 0, 1600, 900}}));
    EXPECT_EQ(displays[1], (Display{2, {-1920, -360, 1920, 1080}}));
}

TEST(ScreenGeometry, VisibleFrameLeavesOutADockOnTheSecondScreen) {
    const ScreenGeometry geometry(
        {bare(1, {1920, 360, 1600, 900}), {2, {0, 0, 1920, 1080}, 1, {60, 0, 1860, 1052}}});
    const std::vector<Screen> screens = geometry.screens();
    ASSERT_EQ(screens.size(), 2U);
    EXPECT_EQ(screens[0].visibleFrame, screens[0].frame);
    // 60 pixels at the left and 28 at the lower edge are taken.
    EXPECT_EQ(screens[1].visibleFrame, (Rect{-1860, 208, 1860, 1052}));
}

TEST(ScreenGeometry, FinePrimaryScreenHasHalfTheSize) {
    const ScreenGeometry geometry = mixedRatios();
    EXPECT_EQ(geometry.desktopHeight(), 720);
    EXPECT_EQ(geometry.displays()[0].bounds, (Rect{0, 0, 1280, 720}));
    EXPECT_EQ(geometry.displays()[1].bounds, (Rect{2560, 200, 1920, 1080}));
    EXPECT_EQ(geometry.logicalFromNative(Point{2000, 1000}), (Point{1000, 500}));
    EXPECT_EQ(geometry.logicalFromNative(Point{2660, 300}), (Point{2660, 300}));
    EXPECT_EQ(geometry.screenFromNative(Point{2000, 1000}), (Point{1000, 220}));
    EXPECT_EQ(geometry.screenFromNative(Point{2660, 300}), (Point{2660, 420}));
    EXPECT_EQ(geometry.ratioAtNative({2000, 1000}), 2);
    EXPECT_EQ(geometry.ratioAtNative({2660, 300}), 1);
}

TEST(ScreenGeometry, FineSecondScreenKeepsItsNativeCorner) {
    const ScreenGeometry geometry = fineSecond();
    EXPECT_EQ(geometry.displays()[1].bounds, (Rect{1920, 0, 1920, 1080}));
    EXPECT_EQ(geometry.logicalFromNative(Point{1920 + 400, 600}), (Point{1920 + 200, 300}));
    EXPECT_EQ(geometry.nativeFromLogical(Point{1920 + 200, 300}), (Point{1920 + 400, 600}));
    EXPECT_EQ(geometry.nativeFromScreen(Rect{2120, 680, 100, 50}), (Rect{2320, 700, 200, 100}));
}

TEST(ScreenGeometry, EveryConversionHasItsInverse) {
    for (const ScreenGeometry& geometry : {primaryAtLowerRight(), mixedRatios(), fineSecond()}) {
        for (const ScreenLayout& layout : geometry.layouts()) {
            const Rect frame = layout.nativeFrame;
            const Rect native = {frame.x + 64, frame.y + 32, 128, 16};
            const Point point = {frame.x + 300, frame.y + 500};
            EXPECT_EQ(geometry.nativeFromLogical(geometry.logicalFromNative(native)), native);
            EXPECT_EQ(geometry.nativeFromCapture(geometry.captureFromNative(native)), native);
            EXPECT_EQ(geometry.nativeFromScreen(geometry.screenFromNative(native)), native);
            EXPECT_EQ(geometry.nativeFromLogical(geometry.logicalFromNative(point)), point);
            EXPECT_EQ(geometry.nativeFromCapture(geometry.captureFromNative(point)), point);
            EXPECT_EQ(geometry.nativeFromScreen(geometry.screenFromNative(point)), point);
            EXPECT_EQ(geometry.captureFromScreen(geometry.screenFromCapture(point)), point);
            EXPECT_EQ(geometry.screenFromLogical(geometry.logicalFromScreen(point)), point);
        }
    }
}

TEST(ScreenGeometry, ARectangleIsConvertedByTheScreenOfItsCentre) {
    const ScreenGeometry geometry = mixedRatios();
    // 100 of its 400 pixels reach over to the coarse screen.
    EXPECT_EQ(geometry.logicalFromNative(Rect{2260, 300, 400, 40}), (Rect{1130, 150, 200, 20}));
    // 300 of them do.
    EXPECT_EQ(geometry.logicalFromNative(Rect{2460, 300, 400, 40}), (Rect{2460, 300, 400, 40}));
}

TEST(ScreenGeometry, APointOnNoScreenBelongsToTheNearest) {
    const ScreenGeometry geometry = mixedRatios();
    // Above the coarse screen, which begins 200 pixels further down.
    EXPECT_EQ(geometry.logicalFromNative(Point{4000, 100}), (Point{4000, 100}));
    // Below the fine one.
    EXPECT_EQ(geometry.logicalFromNative(Point{100, 1500}), (Point{50, 750}));
    // In the logical gap that the fine screen leaves, nearer to it.
    EXPECT_EQ(geometry.nativeFromLogical(Point{1300, 100}), (Point{2600, 200}));
    // Nearer to the coarse one.
    EXPECT_EQ(geometry.nativeFromLogical(Point{2500, 300}), (Point{2500, 300}));
}

TEST(ScreenGeometry, TheRightAndLowerEdgesBelongToTheNextScreen) {
    const ScreenGeometry geometry = fineSecond();
    EXPECT_EQ(geometry.ratioAtNative({1919.5, 10}), 1);
    EXPECT_EQ(geometry.ratioAtNative({1920, 10}), 2);
}

TEST(ScreenGeometry, PixelsOfADisplayAreWholeAndInsideIt) {
    const ScreenGeometry geometry = fineSecond();
    EXPECT_EQ(geometry.nativePixelsOfDisplay(1, {100, 100, 520, 160}), (Rect{100, 100, 520, 160}));
    EXPECT_EQ(geometry.nativePixelsOfDisplay(2, {1920, 0, 520, 160}), (Rect{1920, 0, 1040, 320}));
    EXPECT_EQ(geometry.nativePixelsOfDisplay(1, {1800, -20, 520, 160}), (Rect{1800, 0, 120, 140}));
    EXPECT_EQ(geometry.nativePixelsOfDisplay(1, {100.4, 99.6, 10.2, 10.2}),
              (Rect{100, 100, 11, 10}));
    EXPECT_TRUE(geometry.nativePixelsOfDisplay(1, {2000, 0, 10, 10}).isEmpty());
    EXPECT_TRUE(geometry.nativePixelsOfDisplay(3, {0, 0, 10, 10}).isEmpty());
    EXPECT_TRUE(geometry.nativePixelsOfDisplay(1, {nan, 0, 10, 10}).isEmpty());
    EXPECT_TRUE(geometry.nativePixelsOfDisplay(1, {0, 0, -10, 10}).isEmpty());
}

TEST(ScreenGeometry, PixelsOfADisplayAtANonZeroOrigin) {
    const ScreenGeometry geometry = primaryAtLowerRight();
    EXPECT_EQ(geometry.nativePixelsOfDisplay(1, {0, 0, 520, 160}), (Rect{1920, 360, 520, 160}));
    EXPECT_EQ(geometry.nativePixelsOfDisplay(2, {-1920, -360, 520, 160}), (Rect{0, 0, 520, 160}));
}

TEST(ScreenGeometry, FractionalRatio) {
    const ScreenGeometry geometry({bare(1, {0, 0, 1366, 768}, 1.25)});
    EXPECT_DOUBLE_EQ(geometry.desktopHeight(), 614.4);
    EXPECT_EQ(geometry.nativePixelsOfDisplay(1, {10, 10, 100, 100}), (Rect{13, 13, 125, 125}));
}

TEST(ScreenGeometry, WithoutScreensNothingIsListedAndNothingMoves) {
    const ScreenGeometry geometry;
    EXPECT_TRUE(geometry.isEmpty());
    EXPECT_TRUE(geometry.screens().empty());
    EXPECT_TRUE(geometry.displays().empty());
    EXPECT_EQ(geometry.desktopHeight(), 0);
    EXPECT_EQ(geometry.captureFromNative(Point{3, 4}), (Point{3, 4}));
    EXPECT_EQ(geometry.screenFromNative(Point{3, 4}), (Point{3, -4}));
    EXPECT_EQ(geometry.ratioAtNative({3, 4}), 1);
    EXPECT_EQ(geometry.layout(1), nullptr);
}

TEST(ScreenGeometry, ImpossibleScreensAreLeftOut) {
    const ScreenGeometry geometry({bare(1, {0, 0, 0, 1080}), bare(2, {0, 0, 1920, 1080}, 0),
                                   bare(3, {0, 0, 1920, 1080}, nan), bare(4, {nan, 0, 1920, 1080}),
                                   bare(5, {0, 0, 1920, 1080}, 1)});
    ASSERT_EQ(geometry.layouts().size(), 1U);
    EXPECT_EQ(geometry.layouts()[0].id, 5U);
}

TEST(ScreenGeometry, WorkAreasAreCutToTheirScreen) {
    const Rect frame = {0, 0, 1920, 1080};
    const ScreenGeometry geometry({{1, frame, 1, {-10, 30, 4000, 4000}},
                                   {2, frame, 1, {5000, 0, 10, 10}},
                                   {3, frame, 1, {nan, 0, 10, 10}}});
    EXPECT_EQ(geometry.layouts()[0].nativeWorkArea, (Rect{0, 30, 1920, 1050}));
    EXPECT_EQ(geometry.layouts()[1].nativeWorkArea, frame);
    EXPECT_EQ(geometry.layouts()[2].nativeWorkArea, frame);
}

TEST(ScreenGeometry, RatioOfATargetThatRounds) {
    EXPECT_EQ(ScreenGeometry::targetRatio(1200, 1200), 1);
    EXPECT_EQ(ScreenGeometry::targetRatio(1200, 600), 2);
    EXPECT_EQ(ScreenGeometry::targetRatio(1201, 600), 2);
    EXPECT_EQ(ScreenGeometry::targetRatio(1203, 962), 1.25);
    EXPECT_EQ(ScreenGeometry::targetRatio(1000, 1001), 1);
    EXPECT_DOUBLE_EQ(ScreenGeometry::targetRatio(1000, 1010), 1000.0 / 1010);
    EXPECT_DOUBLE_EQ(ScreenGeometry::targetRatio(1100, 1000), 1.1);
}

TEST(ScreenGeometry, RatioOfATargetThatLies) {
    EXPECT_EQ(ScreenGeometry::targetRatio(1200, 0), 1);
    EXPECT_EQ(ScreenGeometry::targetRatio(1200, -3), 1);
    EXPECT_EQ(ScreenGeometry::targetRatio(1200, nan), 1);
    EXPECT_EQ(ScreenGeometry::targetRatio(nan, 1200), 1);
    EXPECT_EQ(ScreenGeometry::targetRatio(1200, 2), 1);
    EXPECT_EQ(ScreenGeometry::targetRatio(10, 1e9), 1);
}

TEST(ScreenGeometry, TargetUnitsCountFromTheTargetsOwnWindow) {
    const Rect targetWindow = {50, 40, 600, 400};
    const Rect nativeWindow = {100, 80, 1200, 800};
    EXPECT_EQ(ScreenGeometry::nativeFromTarget(Rect{60, 50, 8, 16}, targetWindow, nativeWindow),
              (Rect{120, 100, 16, 32}));
    EXPECT_EQ(ScreenGeometry::nativeFromTarget(Point{60, 50}, targetWindow, nativeWindow),
              (Point{120, 100}));
    EXPECT_EQ(ScreenGeometry::targetFromNative({120, 100}, targetWindow, nativeWindow),
              (Point{60, 50}));
}

}  // namespace
}  // namespace velmora
