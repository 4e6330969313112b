// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11WindowLocator.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QThread>
#include <limits>

#include "Tests/Contracts/X11/Support/PrivateServer.h"
#include "Tests/Contracts/X11/Support/TestApplication.h"

namespace velmora {
namespace {

using test::PrivateServer;
using test::TestApplication;

class X11WindowLocatorTests : public ::testing::Test {
  protected:
    /// Something that is there without an event of ours: asked again until it is.
    template <typename Condition>
    static bool eventually(Condition condition) {
        QElapsedTimer time;
        time.start();
        while (!condition()) {
            if (time.elapsed() > 60000) {
                return false;
            }
            QThread::msleep(5);
        }
        return true;
    }

    std::uint64_t idAt(double x, double y) {
        const auto found = locator.topmostWindowAt({x, y});
        return found ? found->id : 0;
    }

    PrivateServer server;
    TestApplication other{server.display(), VELMORA_X11_TEST_CLIENT};
    TestApplication ours{server.display()};
    X11WindowLocator locator{X11ClientRange(), server.display()};
};

TEST_F(X11WindowLocatorTests, FindsTheTopmostWindowAtAPoint) {
    const auto low = other.open({100, 100, 400, 300});
    const auto high = other.open({200, 150, 100, 100});
    EXPECT_EQ(idAt(110, 110), low);
    EXPECT_EQ(idAt(250, 200), high);
    other.run("raise " + std::to_string(low));
    EXPECT_EQ(idAt(250, 200), low);
}

TEST_F(X11WindowLocatorTests, EdgesAreHalfOpen) {
    const auto window = other.open({100, 100, 400, 300});
    EXPECT_EQ(idAt(100, 100), window);
    EXPECT_EQ(idAt(499.9, 399.9), window);
    EXPECT_EQ(idAt(500, 200), 0U);
    EXPECT_EQ(idAt(99.9, 200), 0U);
}

TEST_F(X11WindowLocatorTests, DescribesAWindow) {
    const auto window = other.open({100, 120, 400, 300}, {.border = 3});
    const auto found = locator.topmostWindowAt({200, 200});
    ASSERT_TRUE(found);
    EXPECT_EQ(found->id, window);
    EXPECT_EQ(found->processId, other.processId());
    EXPECT_EQ(found->nativeFrame, (Rect{100, 120, 406, 306}));
    EXPECT_EQ(found->nativeClient, (Rect{103, 123, 400, 300}));
    EXPECT_EQ(found->nativeShadow, Rect());
}

TEST_F(X11WindowLocatorTests, ReadsTheMarginsOfAShadow) {
    const auto window = other.open({100, 100, 400, 300});
    other.setProperty(window, "_GTK_FRAME_EXTENTS", "CARDINAL", {26, 27, 23, 29});
    const auto found = locator.topmostWindowAt({200, 200});
    ASSERT_TRUE(found);
    EXPECT_EQ(found->nativeShadow, (Rect{26, 23, 27, 29}));
}

TEST_F(X11WindowLocatorTests, TheServersNumberOfTheProcessWinsOverAFalseOne) {
    const auto window = other.open({100, 100, 400, 300});
    other.setProperty(window, "_NET_WM_PID", "CARDINAL", {1});
    const auto found = locator.topmostWindowAt({200, 200});
    ASSERT_TRUE(found);
    EXPECT_EQ(found->processId, other.processId());
}

TEST_F(X11WindowLocatorTests, LooksThroughOurOverlays) {
    const auto window = other.open({100, 100, 400, 300});
    ours.open({150, 150, 100, 100}, {.overrideRedirect = true});
    EXPECT_EQ(idAt(200, 200), window);
}

TEST_F(X11WindowLocatorTests, NothingOverOurOtherWindows) {
    other.open({100, 100, 400, 300});
    ours.open({150, 150, 100, 100});
    EXPECT_EQ(idAt(200, 200), 0U);
    EXPECT_NE(idAt(110, 110), 0U);
}

TEST_F(X11WindowLocatorTests, AGivenRangeIsOursToo) {
    const auto window = other.open({100, 100, 400, 300}, {.overrideRedirect = true});
    const auto below = other.open({100, 100, 400, 300});
    other.run("raise " + std::to_string(window));
    const auto base = static_cast<std::uint32_t>(std::stoul(other.run("base")));
    X11WindowLocator withRange(X11ClientRange{base, 0x1FFFFF}, server.display());
    EXPECT_EQ(idAt(200, 200), window);
    EXPECT_FALSE(withRange.topmostWindowAt({200, 200}));
    ASSERT_NE(below, window);
}

TEST_F(X11WindowLocatorTests, NothingOverTheRootAndOffTheDesktop) {
    EXPECT_FALSE(locator.topmostWindowAt({10, 10}));
    EXPECT_FALSE(locator.topmostWindowAt({-10, 10}));
    EXPECT_FALSE(locator.topmostWindowAt({1e9, 1e9}));
    EXPECT_FALSE(locator.topmostWindowAt({std::numeric_limits<double>::quiet_NaN(), 10}));
}

TEST_F(X11WindowLocatorTests, NothingOverADesktopWindow) {
    const auto desktop = other.open({0, 0, 1600, 1000});
    other.setAtoms(desktop, "_NET_WM_WINDOW_TYPE", {"_NET_WM_WINDOW_TYPE_DESKTOP"});
    EXPECT_EQ(idAt(10, 10), 0U);
}

TEST_F(X11WindowLocatorTests, AWindowIsWhereItsShapeIs) {
    const auto below = other.open({100, 100, 400, 300});
    const auto shaped = other.open({100, 100, 400, 300}, {.border = 2});
    other.shapeBounding(shaped, {0, 0, 50, 50});
    // Shapes count from inside the border.
    EXPECT_EQ(idAt(151, 151), shaped);
    EXPECT_EQ(idAt(152, 151), below);
    EXPECT_EQ(idAt(101, 101), below);
}

TEST_F(X11WindowLocatorTests, AWindowThatLetsInputThroughIsLookedThrough) {
    const auto below = other.open({100, 100, 400, 300});
    const auto above = other.open({100, 100, 400, 300});
    other.shapeInput(above, {200, 0, 50, 50});
    EXPECT_EQ(idAt(110, 110), below);
    EXPECT_EQ(idAt(310, 110), above);
}

/// What a compositing manager does not show is not what the user points at.
TEST_F(X11WindowLocatorTests, AnInvisibleWindowIsLookedThrough) {
    const auto below = other.open({100, 100, 400, 300});
    for (const bool overrideRedirect : {false, true}) {
        const auto above = other.open({100, 100, 400, 300}, {.overrideRedirect = overrideRedirect});
        other.setProperty(above, "_NET_WM_WINDOW_OPACITY", "CARDINAL", {0});
        EXPECT_EQ(idAt(200, 200), above);
        other.run("own _NET_WM_CM_S0");
        EXPECT_EQ(idAt(200, 200), below);
        other.setProperty(above, "_NET_WM_WINDOW_OPACITY", "CARDINAL", {0x10000000});
        EXPECT_EQ(idAt(200, 200), above);
        other.run("disown _NET_WM_CM_S0");
        other.run("destroy " + std::to_string(above));
    }
}

TEST_F(X11WindowLocatorTests, UnmappedWindowsAreNotThere) {
    const auto below = other.open({100, 100, 400, 300});
    const auto above = other.open({100, 100, 400, 300});
    EXPECT_EQ(idAt(200, 200), above);
    other.run("unmap " + std::to_string(above));
    EXPECT_EQ(idAt(200, 200), below);
    other.run("destroy " + std::to_string(below));
    EXPECT_EQ(idAt(200, 200), 0U);
}

TEST_F(X11WindowLocatorTests, FindsTheClientInsideAFrame) {
    const auto frame = other.open({100, 100, 400, 300}, {.overrideRedirect = true});
    const auto inner = other.open({4, 20, 392, 276}, {.parent = frame});
    const auto client = other.open({0, 0, 392, 276}, {.parent = inner});
    other.setProperty(client, "WM_STATE", "WM_STATE", {1, 0});
    const auto found = locator.topmostWindowAt({200, 110});
    ASSERT_TRUE(found);
    EXPECT_EQ(found->id, client);
    EXPECT_EQ(found->nativeFrame, (Rect{100, 100, 400, 300}));
    EXPECT_EQ(found->nativeClient, (Rect{104, 120, 392, 276}));
}

TEST_F(X11WindowLocatorTests, OfSeveralClientsInAFrameTheOneUnderThePointIsTaken) {
    const auto frame = other.open({100, 100, 400, 300}, {.overrideRedirect = true});
    const auto left = other.open({0, 0, 200, 300}, {.parent = frame});
    const auto right = other.open({200, 0, 200, 300}, {.parent = frame});
    other.setProperty(left, "WM_STATE", "WM_STATE", {1, 0});
    other.setProperty(right, "WM_STATE", "WM_STATE", {1, 0});
    EXPECT_EQ(idAt(150, 200), left);
    EXPECT_EQ(idAt(350, 200), right);
}

TEST_F(X11WindowLocatorTests, WorksUnderAWindowManager) {
    server.startWindowManager();
    const auto probe = other.open({100, 100, 400, 300});
    other.setProperty(probe, "_NET_WM_PID", "CARDINAL",
                      {static_cast<std::uint32_t>(other.processId())});
    // Until the manager has put the window into a frame.
    ASSERT_TRUE(eventually([&] {
        const auto found = locator.focusedWindow();
        return found && found->id == probe &&
               found->nativeFrame.height > found->nativeClient.height &&
               locator.topmostWindowAt({found->nativeClient.midX(), found->nativeClient.midY()});
    }));
    const auto focused = locator.focusedWindow();
    ASSERT_TRUE(focused);
    const auto found =
        locator.topmostWindowAt({focused->nativeClient.midX(), focused->nativeClient.midY()});
    ASSERT_TRUE(found);
    EXPECT_EQ(*found, *focused);
    EXPECT_EQ(found->processId, other.processId());
    // Over the title bar it is the same window.
    const auto title =
        locator.topmostWindowAt({focused->nativeFrame.midX(), focused->nativeFrame.y + 2});
    ASSERT_TRUE(title);
    EXPECT_EQ(title->id, probe);
    // Ours, inside a frame of the manager's, hides what lies below.
    const auto own = ours.open({0, 0, 1200, 900});
    ASSERT_TRUE(eventually([&] { return idAt(focused->nativeClient.midX(), 400) == 0; }));
    EXPECT_TRUE(eventually([&] { return !locator.focusedWindow(); }));
    ASSERT_NE(own, 0U);
}

TEST_F(X11WindowLocatorTests, FocusWithoutAWindowManager) {
    const auto window = other.open({100, 100, 400, 300});
    const auto child = other.open({10, 10, 50, 50}, {.parent = window});
    EXPECT_FALSE(locator.focusedWindow());
    other.run("focus " + std::to_string(child));
    const auto found = locator.focusedWindow();
    ASSERT_TRUE(found);
    EXPECT_EQ(found->id, window);
    const auto own = ours.open({600, 100, 100, 100});
    ours.run("focus " + std::to_string(own));
    EXPECT_FALSE(locator.focusedWindow());
}

TEST_F(X11WindowLocatorTests, AnActiveWindowThatIsGoneIsNone) {
    const auto window = other.open({100, 100, 400, 300});
    other.setProperty(0, "_NET_ACTIVE_WINDOW", "WINDOW", {window});
    ASSERT_TRUE(locator.focusedWindow());
    other.run("destroy " + std::to_string(window));
    EXPECT_FALSE(locator.focusedWindow());
    other.setProperty(0, "_NET_ACTIVE_WINDOW", "WINDOW", {0});
    EXPECT_FALSE(locator.focusedWindow());
}

TEST_F(X11WindowLocatorTests, WithoutAServerThereIsNothing) {
    other.open({100, 100, 400, 300});
    ASSERT_TRUE(locator.topmostWindowAt({200, 200}));
    server.crash();
    EXPECT_FALSE(locator.topmostWindowAt({200, 200}));
    EXPECT_FALSE(locator.focusedWindow());
    X11WindowLocator late(X11ClientRange(), server.display());
    EXPECT_FALSE(late.topmostWindowAt({200, 200}));
    EXPECT_FALSE(late.focusedWindow());
}

}  // namespace
}  // namespace velmora
