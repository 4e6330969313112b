// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/HoverMonitor.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include "Tests/Velmora/Coordination/RecordedEvents.h"
#include "Velmora/Platform/Recorded/ManualClock.h"
#include "Velmora/Platform/Recorded/ManualMainQueue.h"

namespace velmora {
namespace {

using testing::RecordedEvents;

class HoverMonitorTest : public ::testing::Test {
  protected:
    HoverMonitorTest() {
        monitor->onMouseMoved = [this](Point point) { moves.push_back(point); };
        monitor->onMouseDown = [this](Point point) { presses.push_back(point); };
        monitor->onDwell = [this](Point point, ModifierFlags flags) {
            dwells.push_back(point);
            dwellFlags.push_back(flags);
        };
        monitor->onModifierFlagsChanged = [this](ModifierFlags flags) { changes.push_back(flags); };
    }

    void moveTo(Point point, RecordedEvents::Kind kind = RecordedEvents::Kind::global) {
        events.location = point;
        events.send(kind, EventMask::mouseMoved);
        queue.runAll();
    }

    void press(Point point, RecordedEvents::Kind kind = RecordedEvents::Kind::global) {
        events.location = point;
        events.send(kind, EventMask::anyMouseDown);
        queue.runAll();
    }

    RecordedEvents events;
    ManualClock clock;
    ManualMainQueue queue;
    std::optional<HoverMonitor> monitor{std::in_place, events, clock, queue};
    std::vector<Point> moves;
    std::vector<Point> presses;
    std::vector<Point> dwells;
    std::vector<ModifierFlags> dwellFlags;
    std::vector<ModifierFlags> changes;
};

TEST_F(HoverMonitorTest, InstallsSixMonitorsInOrder) {
    monitor->start();
    using Kind = RecordedEvents::Kind;
    const std::vector<std::pair<Kind, EventMask>> expected{
        {Kind::global, EventMask::mouseMoved},   {Kind::local, EventMask::mouseMoved},
        {Kind::global, EventMask::anyMouseDown}, {Kind::local, EventMask::anyMouseDown},
        {Kind::global, EventMask::flagsChanged}, {Kind::local, EventMask::flagsChanged}};
    ASSERT_EQ(events.monitors.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(events.monitors[i].kind, expected[i].first) << i;
        EXPECT_EQ(events.monitors[i].mask, expected[i].second) << i;
    }
    EXPECT_EQ(static_cast<std::uint32_t>(EventMask::anyMouseDown), 0x200000AU);
}

TEST_F(HoverMonitorTest, StartingTwiceInstallsOneSet) {
    monitor->start();
    monitor->start();
    EXPECT_EQ(events.installations, 6U);
}

TEST_F(HoverMonitorTest, StoppingRemovesEverythingAndIsHarmlessTwice) {
    monitor->stop();
    monitor->start();
    moveTo({100, 100});
    monitor->stop();
    EXPECT_TRUE(events.monitors.empty());
    EXPECT_EQ(clock.pendingTimers(), 0U);
    monitor->stop();
    monitor->start();
    EXPECT_EQ(events.monitors.size(), 6U);
}

TEST_F(HoverMonitorTest, AFailedInstallationLeavesNothingBehindAtTheNext) {
    events.refusesGlobal = true;
    monitor->start();
    EXPECT_FALSE(monitor->isStarted());
    events.refusesGlobal = false;
    monitor->start();
    EXPECT_TRUE(monitor->isStarted());
    EXPECT_EQ(events.monitors.size(), 6U);
    monitor->stop();
    EXPECT_TRUE(events.monitors.empty());
}

TEST_F(HoverMonitorTest, TrembleOfTwoPointsCountsAsRest) {
    monitor->start();
    moveTo({100, 100});
    moveTo({102, 100});
    EXPECT_EQ(moves.size(), 1U);
    clock.advance(0.2);
    moveTo({100, 98});
    clock.advance(0.05);
    EXPECT_EQ(dwells, (std::vector<Point>{{100, 100}}));
}

TEST_F(HoverMonitorTest, AMoveBeyondTwoPointsRestartsTheDwell) {
    monitor->start();
    moveTo({100, 100});
    clock.advance(0.2);
    moveTo({102.01, 100});
    EXPECT_EQ(moves.size(), 2U);
    clock.advance(0.2);
    EXPECT_TRUE(dwells.empty());
    clock.advance(0.05);
    EXPECT_EQ(dwells, (std::vector<Point>{{102.01, 100}}));
}

TEST_F(HoverMonitorTest, DistanceIsMeasuredDiagonallyFromTheLastReportedPlace) {
    monitor->start();
    moveTo({100, 100});
    moveTo({101.5, 101.5});  // 2.12 away.
    EXPECT_EQ(moves.size(), 2U);
    // Creeping in steps of 1.9 from the last reported place is noticed once it adds up.
    moveTo({103.3, 101.5});
    EXPECT_EQ(moves.size(), 2U);
    moveTo({104.0, 101.5});
    EXPECT_EQ(moves.size(), 3U);
}

TEST_F(HoverMonitorTest, RestingFiresExactlyOneDwell) {
    monitor->start();
    moveTo({50, 60});
    clock.advance(0.249);
    EXPECT_TRUE(dwells.empty());
    clock.advance(0.001);
    EXPECT_EQ(dwells.size(), 1U);
    clock.advance(100);
    EXPECT_EQ(dwells.size(), 1U);
}

TEST_F(HoverMonitorTest, TheDwellReportsTheLastMovedPlaceNotThePresentOne) {
    monitor->start();
    moveTo({50, 60});
    events.location = {51, 61};
    clock.advance(0.25);
    EXPECT_EQ(dwells, (std::vector<Point>{{50, 60}}));
}

TEST_F(HoverMonitorTest, TheDelayIsTakenAtTheMove) {
    monitor->start();
    monitor->dwellDelay = 0.8;
    moveTo({50, 60});
    monitor->dwellDelay = 0.1;
    clock.advance(0.5);
    EXPECT_TRUE(dwells.empty());
    clock.advance(0.3);
    EXPECT_EQ(dwells.size(), 1U);
    moveTo({80, 60});
    clock.advance(0.1);
    EXPECT_EQ(dwells.size(), 2U);
}

TEST_F(HoverMonitorTest, APressCancelsTheDwellUntilTheNextMove) {
    monitor->start();
    moveTo({50, 60});
    press({50, 61});
    EXPECT_EQ(presses, (std::vector<Point>{{50, 61}}));
    clock.advance(1);
    EXPECT_TRUE(dwells.empty());
    moveTo({51, 61});  // Within two points of the press.
    clock.advance(1);
    EXPECT_TRUE(dwells.empty());
    moveTo({55, 61});
    clock.advance(0.25);
    EXPECT_EQ(dwells, (std::vector<Point>{{55, 61}}));
}

TEST_F(HoverMonitorTest, EventsOverOurOwnWindowsCountTheSame) {
    monitor->start();
    moveTo({50, 60}, RecordedEvents::Kind::local);
    press({70, 60}, RecordedEvents::Kind::local);
    EXPECT_EQ(moves.size(), 1U);
    EXPECT_EQ(presses.size(), 1U);
    events.send(RecordedEvents::Kind::local, EventMask::flagsChanged, {ModifierFlags::shift});
    queue.runAll();
    EXPECT_EQ(changes.size(), 1U);
}

TEST_F(HoverMonitorTest, TheDwellReportsTheFlagsHeldWhenItFires) {
    monitor->start();
    events.flags = {ModifierFlags::shift};
    moveTo({50, 60});
    events.flags = {ModifierFlags::control | 0x1FFU};
    clock.advance(0.25);
    EXPECT_EQ(dwellFlags, (std::vector<ModifierFlags>{{ModifierFlags::control}}));
}

TEST_F(HoverMonitorTest, FlagsAreMasked) {
    monitor->start();
    events.send(RecordedEvents::Kind::global, EventMask::flagsChanged,
                {ModifierFlags::shift | 0xFFFFU});
    queue.runAll();
    EXPECT_EQ(changes, (std::vector<ModifierFlags>{{ModifierFlags::shift}}));
}

TEST_F(HoverMonitorTest, NothingHappensWithinTheHandler) {
    monitor->start();
    events.location = {50, 60};
    events.send(RecordedEvents::Kind::global, EventMask::mouseMoved);
    EXPECT_TRUE(moves.empty());
    queue.runAll();
    EXPECT_EQ(moves.size(), 1U);
}

TEST_F(HoverMonitorTest, EventsUnderWayWhenItStopsAreDropped) {
    monitor->start();
    events.location = {50, 60};
    events.send(RecordedEvents::Kind::global, EventMask::mouseMoved);
    monitor->stop();
    queue.runAll();
    clock.advance(1);
    EXPECT_TRUE(moves.empty());
    EXPECT_TRUE(dwells.empty());
}

TEST_F(HoverMonitorTest, EventsUnderWayWhenItGoesAreDropped) {
    monitor->start();
    moveTo({50, 60});
    events.location = {90, 60};
    events.send(RecordedEvents::Kind::global, EventMask::mouseMoved);
    monitor.reset();
    queue.runAll();
    clock.advance(1);
    EXPECT_EQ(moves.size(), 1U);
    EXPECT_TRUE(dwells.empty());
    EXPECT_TRUE(events.monitors.empty());
}

TEST_F(HoverMonitorTest, StoppingInsideTheDwellIsHarmless) {
    monitor->onDwell = [this](Point, ModifierFlags) { monitor->stop(); };
    monitor->start();
    moveTo({50, 60});
    clock.advance(0.25);
    EXPECT_FALSE(monitor->isStarted());
}

TEST_F(HoverMonitorTest, StoppingInsideAMoveLeavesNoDwell) {
    monitor->onMouseMoved = [this](Point) { monitor->stop(); };
    monitor->start();
    moveTo({50, 60});
    EXPECT_EQ(clock.pendingTimers(), 0U);
}

TEST_F(HoverMonitorTest, WithoutCallbacksNothingBreaks) {
    monitor->onMouseMoved = {};
    monitor->onMouseDown = {};
    monitor->onDwell = {};
    monitor->onModifierFlagsChanged = {};
    monitor->start();
    moveTo({50, 60});
    clock.advance(0.25);
    press({90, 60});
    events.send(RecordedEvents::Kind::global, EventMask::flagsChanged);
    queue.runAll();
}

TEST_F(HoverMonitorTest, RefusesPlacesThatAreNoNumbers) {
    monitor->start();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    moveTo({nan, 5});
    moveTo({5, infinity});
    press({nan, nan});
    EXPECT_TRUE(moves.empty());
    EXPECT_TRUE(presses.empty());
    moveTo({50, 60});
    EXPECT_EQ(moves.size(), 1U);
}

}  // namespace
}  // namespace velmora
