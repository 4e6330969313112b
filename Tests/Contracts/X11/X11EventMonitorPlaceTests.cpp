// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <optional>
#include <string>
#include <vector>

#include "Tests/Contracts/X11/Support/EventLoop.h"
#include "Tests/Contracts/X11/Support/PausedServer.h"
#include "Tests/Contracts/X11/X11EventMonitorTests.h"

namespace velmora {
namespace {

using test::EventLoop;
using test::PausedServer;

TEST_F(X11EventMonitorTests, PlaceIsInScreenSpace) {
    server.movePointer(300, 100);
    EXPECT_EQ(monitor.mouseLocation(), (Point{300, 900}));
    geometry.geometry = ScreenGeometry(
        {{1, {200, 50, 1000, 800}, 2, {200, 50, 1000, 800}}, {2, {1200, 0, 400, 1000}, 1, {}}});
    EXPECT_EQ(monitor.mouseLocation(), (Point{50, 375}));
    server.movePointer(1300, 10);
    EXPECT_EQ(monitor.mouseLocation(), (Point{1100, 440}));
}

TEST_F(X11EventMonitorTests, AskingForThePlaceLosesNoEvent) {
    watchEverything();
    server.movePointer(300, 100);
    monitor.mouseLocation();
    ASSERT_TRUE(waitFor(1));
    server.press(1);
    server.release(1);
    monitor.modifierFlags();
    ASSERT_TRUE(waitFor(2));
    EXPECT_EQ(seen, (Seen{"global moved", "global down"}));
}

TEST_F(X11EventMonitorTests, TellingWaitsForNobody) {
    watchEverything();
    EventLoop::settle();
    server.movePointer(300, 100);
    {
        const PausedServer paused(server);
        EXPECT_TRUE(EventLoop::handleNow());
        EXPECT_EQ(seen, Seen());
        EXPECT_FALSE(paused.wasAwaited());
    }
    ASSERT_TRUE(waitFor(1));
    EXPECT_EQ(seen, Seen{"global moved"});
}

TEST_F(X11EventMonitorTests, NoAnswerIsOverlooked) {
    watchEverything();
    constexpr std::size_t moves = 2000;
    for (std::size_t i = 1; i <= moves; ++i) {
        server.movePointer(300 + static_cast<int>(i % 2), 100);
        ASSERT_TRUE(waitFor(i)) << i;
    }
}

TEST_F(X11EventMonitorTests, ThePlaceOfAnEventIsKnownWithoutAQuestion) {
    Point inHandler;
    Point posted;
    std::optional<PausedServer> paused;
    bool wasAwaited = true;
    monitor.addGlobalMonitor(EventMask::mouseMoved, [&](ModifierFlags) {
        paused.emplace(server);
        inHandler = monitor.mouseLocation();
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [&] {
                posted = monitor.mouseLocation();
                wasAwaited = paused->wasAwaited();
                paused.reset();
                seen.emplace_back("posted");
            },
            Qt::QueuedConnection);
    });
    server.movePointer(300, 100);
    ASSERT_TRUE(waitFor(1));
    EXPECT_FALSE(wasAwaited);
    EXPECT_EQ(inHandler, (Point{300, 900}));
    EXPECT_EQ(posted, (Point{300, 900}));
    // Later it is asked for, since the pointer may be set without an event.
    server.warpPointer(400, 200);
    EXPECT_EQ(monitor.mouseLocation(), (Point{400, 800}));
}

TEST_F(X11EventMonitorTests, ThePlaceOfAnEventOutlastsTheOneBefore) {
    std::vector<Point> places;
    monitor.addGlobalMonitor(EventMask::mouseMoved, [&](ModifierFlags) {
        if (seen.empty()) {
            // The next event is told before the event loop is through with this one.
            server.movePointer(310, 110);
            QMetaObject::invokeMethod(
                QCoreApplication::instance(), [&] { server.movePointerBy(0, 0); },
                Qt::QueuedConnection);
            monitor.modifierFlags();
        }
        seen.emplace_back("moved");
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [&, isLast = seen.size() == 2] {
                if (isLast) {
                    server.warpPointer(400, 200);
                }
                places.push_back(monitor.mouseLocation());
            },
            Qt::QueuedConnection);
    });
    server.movePointer(300, 100);
    ASSERT_TRUE(EventLoop::waitUntil([&] { return places.size() >= 2; }));
    EXPECT_EQ(places[1], (Point{310, 890}));
}

TEST_F(X11EventMonitorTests, AnAnswerThatComesWithAnotherIsTold) {
    watchEverything();
    EventLoop::settle();
    server.movePointer(300, 100);
    {
        const PausedServer paused(server);
        EXPECT_TRUE(EventLoop::handleNow());
        ASSERT_EQ(seen, Seen());
    }
    monitor.modifierFlags();  // Reads the answer that is under way too: nothing is left to come.
    EXPECT_EQ(seen, Seen());
    EventLoop::settle();
    EXPECT_EQ(seen, Seen{"global moved"});
}

}  // namespace
}  // namespace velmora
