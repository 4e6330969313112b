// SPDX-License-Identifier: MIT
#include "Tests/Contracts/X11/X11EventMonitorTests.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Tests/Contracts/X11/Support/EventLoop.h"

namespace velmora {
namespace {

using test::EventLoop;

constexpr unsigned leftShift = 0xFFE1;
constexpr unsigned rightShift = 0xFFE2;
constexpr unsigned capsLock = 0xFFE5;
constexpr unsigned numLock = 0xFF7F;
constexpr unsigned leftControl = 0xFFE3;
constexpr unsigned letterA = 'a';

TEST_F(X11EventMonitorTests, TokensAreUniqueAndNeverZero) {
    watchEverything();
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        EXPECT_NE(tokens[i], 0U);
        for (std::size_t j = 0; j < i; ++j) {
            EXPECT_NE(tokens[i], tokens[j]);
        }
    }
}

TEST_F(X11EventMonitorTests, MotionOverAnotherProgramIsGlobal) {
    other.open({0, 0, 1600, 1000});
    watchEverything();
    server.movePointer(300, 200);
    ASSERT_TRUE(waitFor(1));
    EXPECT_EQ(seen, Seen{"global moved"});
}

TEST_F(X11EventMonitorTests, MotionOverTheBareRootIsGlobal) {
    watchEverything();
    server.movePointer(300, 200);
    ASSERT_TRUE(waitFor(1));
    EXPECT_EQ(seen, Seen{"global moved"});
}

TEST_F(X11EventMonitorTests, MotionOverOurWindowIsLocal) {
    ours.open({100, 100, 400, 400}, {.overrideRedirect = true});
    watchEverything();
    server.movePointer(300, 200);
    ASSERT_TRUE(waitFor(1));
    server.movePointer(50, 50);
    ASSERT_TRUE(waitFor(2));
    EXPECT_EQ(seen, (Seen{"local moved", "global moved"}));
}

TEST_F(X11EventMonitorTests, OurWindowInsideAFrameIsLocal) {
    const auto frame = other.open({100, 100, 400, 400}, {.overrideRedirect = true});
    ours.open({0, 20, 400, 380}, {.parent = frame});
    watchEverything();
    server.movePointer(300, 300);
    ASSERT_TRUE(waitFor(1));
    server.movePointer(300, 110);  // The frame itself is the window manager's.
    ASSERT_TRUE(waitFor(2));
    EXPECT_EQ(seen, (Seen{"local moved", "global moved"}));
}

TEST_F(X11EventMonitorTests, AnOverlayThatLetsInputThroughIsNotOurs) {
    other.open({0, 0, 1600, 1000});
    const auto overlay = ours.open({100, 100, 400, 400}, {.overrideRedirect = true});
    ours.shapeInput(overlay, {});
    watchEverything();
    server.movePointer(300, 200);
    ASSERT_TRUE(waitFor(1));
    EXPECT_EQ(seen, Seen{"global moved"});
}

TEST_F(X11EventMonitorTests, MotionsThatArriveTogetherAreOne) {
    watchEverything();
    for (int i = 1; i <= 20; ++i) {
        server.movePointer(10 * i, 100);
    }
    pressAtTheEnd();
    EXPECT_EQ(seen, (Seen{"global moved", "global down"}));
}

TEST_F(X11EventMonitorTests, SettingThePointerIsNoMove) {
    watchEverything();
    server.warpPointer(700, 700);
    pressAtTheEnd();
    EXPECT_EQ(seen, Seen{"global down"});
}

TEST_F(X11EventMonitorTests, DraggingIsNoMove) {
    watchEverything();
    server.press(1);
    server.movePointer(300, 300);
    server.movePointer(320, 300);
    ASSERT_TRUE(waitFor(1));
    EventLoop::settle();
    EXPECT_EQ(seen, Seen{"global down"});
    server.movePointer(340, 300);
    server.release(1);
    server.movePointer(360, 300);
    ASSERT_TRUE(waitFor(2));
    EXPECT_EQ(seen, (Seen{"global down", "global moved"}));
}

TEST_F(X11EventMonitorTests, DraggingWithASideButtonIsNoMove) {
    watchEverything();
    server.press(8);
    server.movePointer(300, 300);
    server.movePointer(320, 300);
    pressAtTheEnd();
    server.release(8);
    EXPECT_EQ(seen, (Seen{"global down", "global down"}));
}

TEST_F(X11EventMonitorTests, AButtonHeldBeforeTheMonitorsCameMakesADrag) {
    server.press(1);
    watchEverything();
    server.movePointer(300, 300);
    server.release(1);
    pressAtTheEnd();
    EXPECT_EQ(seen, Seen{"global down"});
}

TEST_F(X11EventMonitorTests, EachKindOfPressHasItsMask) {
    const auto left = monitor.addGlobalMonitor(EventMask::leftMouseDown, recorder("left"));
    const auto right = monitor.addGlobalMonitor(EventMask::rightMouseDown, recorder("right"));
    const auto more = monitor.addGlobalMonitor(EventMask::otherMouseDown, recorder("other"));
    ASSERT_TRUE(left != 0 && right != 0 && more != 0);
    for (const int button : {1, 3, 2, 8, 9}) {
        server.press(button);
        server.release(button);
    }
    ASSERT_TRUE(waitFor(5));
    EXPECT_EQ(seen, (Seen{"left", "right", "other", "other", "other"}));
}

TEST_F(X11EventMonitorTests, TurningAWheelIsNoPressAndNoDrag) {
    watchEverything();
    for (const int button : {4, 5, 6, 7}) {
        server.press(button);
        server.release(button);
    }
    server.press(4);
    server.movePointer(300, 300);
    ASSERT_TRUE(waitFor(1));
    server.release(4);
    pressAtTheEnd();
    EXPECT_EQ(seen, (Seen{"global moved", "global down"}));
}

TEST_F(X11EventMonitorTests, APressOverOurWindowIsLocalOnly) {
    ours.open({100, 100, 400, 400}, {.overrideRedirect = true});
    server.movePointer(200, 200);
    watchEverything();
    server.press(1);
    server.release(1);
    ASSERT_TRUE(waitFor(1));
    server.movePointer(50, 50);
    ASSERT_TRUE(waitFor(2));
    EXPECT_EQ(seen, (Seen{"local down", "global moved"}));
}

TEST_F(X11EventMonitorTests, ShiftIsTold) {
    watchEverything();
    for (const unsigned key : {leftShift, rightShift}) {
        seen.clear();
        seenFlags.clear();
        server.keyDown(key);
        ASSERT_TRUE(waitFor(1));
        EXPECT_EQ(monitor.modifierFlags(), ModifierFlags{ModifierFlags::shift});
        server.keyUp(key);
        ASSERT_TRUE(waitFor(2));
        EXPECT_EQ(seen, (Seen{"global flags", "global flags"}));
        EXPECT_EQ(seenFlags[0], ModifierFlags{ModifierFlags::shift});
        EXPECT_EQ(seenFlags[1], ModifierFlags{});
    }
}

TEST_F(X11EventMonitorTests, CapsLockIsNotShift) {
    watchEverything();
    server.keyDown(capsLock);
    server.keyUp(capsLock);
    ASSERT_TRUE(waitFor(1));
    EXPECT_FALSE(monitor.modifierFlags().containsShift());
    EXPECT_EQ(monitor.modifierFlags(), ModifierFlags{ModifierFlags::capsLock});
    for (const ModifierFlags flags : seenFlags) {
        EXPECT_FALSE(flags.containsShift());
    }
    server.keyDown(leftShift);
    ASSERT_TRUE(waitFor(2));
    EXPECT_TRUE(seenFlags.back().containsShift());
    server.keyUp(leftShift);
    server.keyDown(capsLock);
    server.keyUp(capsLock);
}

TEST_F(X11EventMonitorTests, WhatIsNoModifierChangesNoFlags) {
    watchEverything();
    server.keyDown(numLock);
    server.keyUp(numLock);
    server.keyDown(leftShift);
    ASSERT_TRUE(waitFor(1));
    server.keyUp(leftShift);
    ASSERT_TRUE(waitFor(2));
    server.keyDown(numLock);
    server.keyUp(numLock);
    // The keys come in order: whatever Num Lock had told would stand before Shift.
    EXPECT_EQ(seenFlags,
              (std::vector<ModifierFlags>{ModifierFlags{ModifierFlags::shift}, ModifierFlags{}}));
}

TEST_F(X11EventMonitorTests, ModifiersOverOurWindowAreLocal) {
    ours.open({100, 100, 400, 400}, {.overrideRedirect = true});
    server.movePointer(200, 200);
    watchEverything();
    server.keyDown(leftControl);
    ASSERT_TRUE(waitFor(1));
    server.keyUp(leftControl);
    EXPECT_EQ(seen[0], "local flags");
    EXPECT_EQ(seenFlags[0], ModifierFlags{ModifierFlags::control});
}

TEST_F(X11EventMonitorTests, KeysOfTextAreNeverTold) {
    watchEverything();
    EventLoop::settle();
    server.keyDown(letterA);
    server.keyUp(letterA);
    // Nothing has even been sent.
    EXPECT_FALSE(EventLoop::handleNow());
    EXPECT_TRUE(seen.empty());
}

TEST_F(X11EventMonitorTests, PressesCarryTheFlags) {
    watchEverything();
    server.keyDown(leftShift);
    server.press(1);
    ASSERT_TRUE(waitFor(2));
    server.release(1);
    server.keyUp(leftShift);
    EXPECT_EQ(seen, (Seen{"global flags", "global down"}));
    EXPECT_TRUE(seenFlags[1].containsShift());
}

TEST_F(X11EventMonitorTests, OtherProgramsGrabsHideNothing) {
    const auto window = other.open({0, 0, 200, 200});
    watchEverything();
    other.run("grab " + std::to_string(window));
    server.movePointer(300, 300);
    ASSERT_TRUE(waitFor(1));
    server.press(1);
    server.release(1);
    ASSERT_TRUE(waitFor(2));
    server.keyDown(leftShift);
    ASSERT_TRUE(waitFor(3));
    server.keyUp(leftShift);
    EXPECT_EQ(seen, (Seen{"global moved", "global down", "global flags"}));
    other.run("ungrab");
}

TEST_F(X11EventMonitorTests, WithoutAMonitorTheServerSendsNothing) {
    EventLoop::settle();
    server.movePointer(100, 100);
    server.press(1);
    server.release(1);
    EXPECT_FALSE(EventLoop::handleNow());
    watchEverything();
    EventLoop::settle();
    server.movePointer(200, 100);
    EXPECT_TRUE(EventLoop::handleNow());
    for (const auto token : tokens) {
        monitor.removeMonitor(token);
    }
    EventLoop::settle();
    seen.clear();
    server.movePointer(300, 100);
    server.keyDown(leftShift);
    server.keyUp(leftShift);
    EXPECT_FALSE(EventLoop::handleNow());
    EXPECT_TRUE(seen.empty());
}

TEST_F(X11EventMonitorTests, OnlyWhatIsWatchedIsSent) {
    watch("flags", EventMask::flagsChanged);
    EventLoop::settle();
    server.movePointer(300, 100);
    EXPECT_FALSE(EventLoop::handleNow());
    server.keyDown(leftShift);
    ASSERT_TRUE(waitFor(1));
    server.keyUp(leftShift);
}

TEST_F(X11EventMonitorTests, NothingRunsWhileThePointerRests) {
    watchEverything();
    server.movePointer(300, 100);
    ASSERT_TRUE(waitFor(1));
    EventLoop::settle();
    EXPECT_FALSE(EventLoop::handleNow());
}

TEST_F(X11EventMonitorTests, ARemovedMonitorIsToldNothing) {
    watchEverything();
    monitor.removeMonitor(tokens[0]);
    monitor.removeMonitor(tokens[0]);
    monitor.removeMonitor(0);
    server.movePointer(300, 100);
    pressAtTheEnd();
    EXPECT_EQ(seen, Seen{"global down"});
}

TEST_F(X11EventMonitorTests, AHandlerMayRemoveMonitors) {
    EventMonitor::Token second = 0;
    const auto first = monitor.addGlobalMonitor(EventMask::leftMouseDown, [&](ModifierFlags) {
        seen.emplace_back("first");
        monitor.removeMonitor(second);
    });
    second = monitor.addGlobalMonitor(EventMask::leftMouseDown, recorder("second"));
    const auto third = monitor.addGlobalMonitor(EventMask::leftMouseDown, recorder("third"));
    ASSERT_TRUE(first != 0 && second != 0 && third != 0);
    server.press(1);
    server.release(1);
    ASSERT_TRUE(waitFor(2));
    EXPECT_EQ(seen, (Seen{"first", "third"}));
}
TEST_F(X11EventMonitorTests, SurvivesTheServersEnd) {
    watchEverything();
    server.movePointer(300, 100);
    ASSERT_TRUE(waitFor(1));
    server.crash();
    EventLoop::settle();
    EXPECT_EQ(monitor.mouseLocation(), (Point{300, 900}));
    EXPECT_EQ(monitor.modifierFlags(), ModifierFlags());
    monitor.removeMonitor(tokens[0]);
    EXPECT_EQ(monitor.addGlobalMonitor(EventMask::mouseMoved, recorder("late")), 0U);
    EXPECT_FALSE(EventLoop::handleNow());
}

}  // namespace
}  // namespace velmora
