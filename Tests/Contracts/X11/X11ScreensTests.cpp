// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11Screens.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QScreen>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <thread>
#include <vector>

#include "Tests/Contracts/X11/Support/EventLoop.h"
#include "Tests/Contracts/X11/Support/PausedServer.h"
#include "Tests/Contracts/X11/Support/PrivateServer.h"
#include "Tests/Contracts/X11/Support/TestApplication.h"
#include "Velmora/Platform/LinuxX11/X11Connection.h"

namespace velmora {
namespace {

using test::EventLoop;
using test::PausedServer;
using test::PrivateServer;
using test::TestApplication;

class X11ScreensTests : public ::testing::Test {
  protected:
    /// Splits the desktop into two monitors, the second name the primary one.
    void split(const QString& first, const QString& second) {
        server.run("xrandr", {"--setmonitor", "FIRST", first, "screen"});
        server.run("xrandr", {"--setmonitor", "*SECOND", second, "none"});
    }

    void start(const std::string& factors = {}) {
        loop = std::make_unique<EventLoop>(server.display(), factors);
        screens = std::make_unique<X11Screens>(server.display());
    }

    Rect visible(std::size_t index) {
        const auto all = screens->all();
        return index < all.size() ? all[index].visibleFrame : Rect{};
    }

    bool becomesVisible(std::size_t index, const Rect& area) {
        return EventLoop::waitUntil([&] { return visible(index) == area; });
    }

    PrivateServer server{3520, 1260, {"-maxclients", "64"}};
    TestApplication panel{server.display(), VELMORA_X11_TEST_CLIENT};
    std::unique_ptr<EventLoop> loop;
    std::unique_ptr<X11Screens> screens;
};

TEST_F(X11ScreensTests, OneScreen) {
    start();
    const auto all = screens->all();
    ASSERT_EQ(all.size(), 1U);
    EXPECT_EQ(all[0], (Screen{{0, 0, 3520, 1260}, {0, 0, 3520, 1260}}));
    EXPECT_EQ(screens->current().displays().size(), 1U);
    EXPECT_NE(screens->current().displays()[0].id, 0U);
}

TEST_F(X11ScreensTests, ThePrimaryScreenIsFirstWhereverItStands) {
    split("1920/0x1080/0+0+0", "1600/0x900/0+1920+360");
    start();
    const auto all = screens->all();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].frame, (Rect{0, 0, 1600, 900}));
    EXPECT_EQ(all[1].frame, (Rect{-1920, 180, 1920, 1080}));
    const auto layouts = screens->current().layouts();
    EXPECT_EQ(layouts[0].nativeFrame, (Rect{1920, 360, 1600, 900}));
    EXPECT_EQ(layouts[1].nativeFrame, (Rect{0, 0, 1920, 1080}));
    EXPECT_NE(layouts[0].id, layouts[1].id);
}

TEST_F(X11ScreensTests, AgreesWithQtOnWherePointsAre) {
    split("1920/0x1080/0+0+0", "1600/0x900/0+1920+360");
    start("1;2");
    const ScreenGeometry geometry = screens->current();
    ASSERT_EQ(geometry.layouts().size(), 2U);
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect logical = screen->geometry();
        const Rect native = geometry.nativeFromLogical(
            Rect{static_cast<double>(logical.x()), static_cast<double>(logical.y()),
                 static_cast<double>(logical.width()), static_cast<double>(logical.height())});
        const double ratio = screen->devicePixelRatio();
        EXPECT_EQ(native.x, logical.x());
        EXPECT_EQ(native.width, logical.width() * ratio);
        EXPECT_EQ(geometry.ratioAtNative({native.midX(), native.midY()}), ratio);
    }
    EXPECT_NE(QGuiApplication::screens()[0]->devicePixelRatio(),
              QGuiApplication::screens()[1]->devicePixelRatio());
}

TEST_F(X11ScreensTests, NativeSizesAreExactWhereQtRounds) {
    split("1366/0x767/0+0+0", "1921/0x1081/0+1366+0");
    start("1.5;1.5");
    for (const ScreenLayout& layout : screens->current().layouts()) {
        EXPECT_EQ(layout.ratio, 1.5);
        EXPECT_EQ(layout.nativeFrame.size(),
                  layout.nativeFrame.x == 0 ? (Size{1366, 767}) : (Size{1921, 1081}));
    }
}

TEST_F(X11ScreensTests, ADockOnTheSecondScreenTakesFromThatOneAlone) {
    split("1920/0x1080/0+0+0", "1600/0x900/0+1920+360");
    // At the left edge of the primary screen, which lies in the middle of the desktop: its strut
    // counts from the desktop's edge and crosses the other screen.
    const auto dock = panel.open({1920, 360, 60, 900});
    panel.setAtoms(dock, "_NET_WM_WINDOW_TYPE", {"_NET_WM_WINDOW_TYPE_DOCK"});
    panel.setProperty(dock, "_NET_WM_STRUT_PARTIAL", "CARDINAL",
                      {1980, 0, 0, 0, 360, 1259, 0, 0, 0, 0, 0, 0});
    // A bar at the lower edge of the other screen, 180 pixels above the desktop's edge.
    const auto bar = panel.open({0, 1052, 1920, 28});
    panel.setProperty(bar, "_NET_WM_STRUT_PARTIAL", "CARDINAL",
                      {0, 0, 0, 208, 0, 0, 0, 0, 0, 0, 0, 1919});
    start();
    EXPECT_EQ(visible(0), (Rect{60, 0, 1540, 900}));
    EXPECT_EQ(visible(1), (Rect{-1920, 208, 1920, 1052}));
}

TEST_F(X11ScreensTests, TheOlderPropertyTakesAWholeSide) {
    const auto bar = panel.open({0, 0, 3520, 24});
    panel.setProperty(bar, "_NET_WM_STRUT", "CARDINAL", {0, 0, 24, 0});
    start();
    EXPECT_EQ(visible(0), (Rect{0, 0, 3520, 1236}));
}

TEST_F(X11ScreensTests, PanelsAreFollowed) {
    const auto bar = panel.open({0, 0, 3520, 24});
    panel.setAtoms(bar, "_NET_WM_WINDOW_TYPE", {"_NET_WM_WINDOW_TYPE_DOCK"});
    panel.setProperty(0, "_NET_CLIENT_LIST", "WINDOW", {bar});
    start();
    EXPECT_EQ(visible(0), (Rect{0, 0, 3520, 1260}));
    // The panel takes its edge, takes more, lets go, comes back, and ends.
    panel.setProperty(bar, "_NET_WM_STRUT", "CARDINAL", {0, 0, 24, 0});
    EXPECT_TRUE(becomesVisible(0, {0, 0, 3520, 1236}));
    panel.setProperty(bar, "_NET_WM_STRUT", "CARDINAL", {0, 0, 48, 0});
    EXPECT_TRUE(becomesVisible(0, {0, 0, 3520, 1212}));
    panel.run("unmap " + std::to_string(bar));
    EXPECT_TRUE(becomesVisible(0, {0, 0, 3520, 1260}));
    panel.run("map " + std::to_string(bar));
    EXPECT_TRUE(becomesVisible(0, {0, 0, 3520, 1212}));
    panel.run("destroy " + std::to_string(bar));
    EXPECT_TRUE(becomesVisible(0, {0, 0, 3520, 1260}));
}

TEST_F(X11ScreensTests, APanelThatComesLaterIsFollowed) {
    panel.setProperty(0, "_NET_CLIENT_LIST", "WINDOW", {1});
    start();
    const auto bar = panel.open({0, 1220, 3520, 40});
    panel.setProperty(bar, "_NET_WM_STRUT", "CARDINAL", {0, 0, 0, 40});
    panel.setProperty(0, "_NET_CLIENT_LIST", "WINDOW", {bar});
    EXPECT_TRUE(becomesVisible(0, {0, 40, 3520, 1220}));
    panel.setProperty(bar, "_NET_WM_STRUT", "CARDINAL", {0, 0, 0, 60});
    EXPECT_TRUE(becomesVisible(0, {0, 60, 3520, 1200}));
}

TEST_F(X11ScreensTests, FollowingWaitsForNobody) {
    start();
    EventLoop::settle();
    const auto bar = panel.open({0, 0, 3520, 24});
    panel.setProperty(bar, "_NET_WM_STRUT", "CARDINAL", {0, 0, 24, 0});
    panel.setProperty(0, "_NET_ACTIVE_WINDOW", "WINDOW", {bar});  // Changes no screen.
    panel.setProperty(0, "_NET_CLIENT_LIST", "WINDOW", {bar});
    {
        const PausedServer paused(server);
        EXPECT_TRUE(EventLoop::handleNow());
        EXPECT_EQ(visible(0), (Rect{0, 0, 3520, 1260}));
        EXPECT_FALSE(paused.wasAwaited());
    }
    EXPECT_TRUE(becomesVisible(0, {0, 0, 3520, 1236}));
}

TEST_F(X11ScreensTests, PanelsAreFollowedWhereTheServerTakesNoMorePrograms) {
    start();
    std::vector<std::unique_ptr<X11Connection>> others;
    do {
        others.push_back(std::make_unique<X11Connection>(server.display()));
    } while (others.back()->isOpen());
    const auto bar = panel.open({0, 0, 3520, 24});
    panel.setProperty(bar, "_NET_WM_STRUT", "CARDINAL", {0, 0, 24, 0});
    panel.setProperty(0, "_NET_CLIENT_LIST", "WINDOW", {bar});
    EXPECT_TRUE(becomesVisible(0, {0, 0, 3520, 1236}));
    // Later it takes some again.
    others.clear();
    panel.setProperty(bar, "_NET_WM_STRUT", "CARDINAL", {0, 0, 48, 0});
    EXPECT_TRUE(becomesVisible(0, {0, 0, 3520, 1212}));
}

TEST_F(X11ScreensTests, NoChangeIsOverlookedWhileAnotherIsTakenIn) {
    const auto bar = panel.open({0, 0, 3520, 24});
    const auto dock = panel.open({0, 1200, 3520, 60});
    panel.setProperty(bar, "_NET_WM_STRUT", "CARDINAL", {0, 0, 24, 0});
    panel.setProperty(dock, "_NET_WM_STRUT", "CARDINAL", {0, 0, 0, 60});
    start();
    TestApplication here(server.display());
    constexpr std::uint32_t rounds = 1000;
    for (std::uint32_t i = 0; i < rounds; ++i) {
        panel.setProperty(0, "_NET_CLIENT_LIST", "WINDOW", {bar, dock});
        ASSERT_TRUE(EventLoop::waitUntil([&] { return visible(0).maxY() == 1236; })) << i;
        EventLoop::settle();
        // The server is told to leave a window alone that is no panel any more, and that may read
        // the next change, at whatever moment that comes.
        const std::uint32_t height = 61 + i % 2;
        std::thread other([&] {
            here.setProperty(0, "_NET_CLIENT_LIST", "WINDOW", {dock});
            const auto later =
                std::chrono::steady_clock::now() + std::chrono::microseconds(i % 500);
            while (std::chrono::steady_clock::now() < later) {
            }
            here.setProperty(dock, "_NET_WM_STRUT", "CARDINAL", {0, 0, 0, height});
        });
        const bool isSeen = becomesVisible(0, {0, 1.0 * height, 3520, 1260.0 - height});
        other.join();
        ASSERT_TRUE(isSeen) << i;
    }
}

TEST_F(X11ScreensTests, AbsurdStrutsTakeNothing) {
    const auto bar = panel.open({0, 0, 3520, 24});
    panel.setProperty(bar, "_NET_WM_STRUT_PARTIAL", "CARDINAL",
                      {4000000000U, 4000000000U, 0, 0, 0, 4000000000U, 0, 4000000000U, 0, 0, 0, 0});
    start();
    EXPECT_EQ(visible(0), (Rect{0, 0, 3520, 1260}));
}

TEST_F(X11ScreensTests, TitlesThatChangeWakeNobody) {
    const auto window = panel.open({0, 0, 400, 300});
    panel.setProperty(0, "_NET_CLIENT_LIST", "WINDOW", {window});
    start();
    EventLoop::settle();
    panel.setProperty(window, "_NET_WM_NAME", "CARDINAL", {1});
    EXPECT_FALSE(EventLoop::handleNow());
}

TEST_F(X11ScreensTests, FollowsMonitorsThatComeAndGo) {
    start();
    ASSERT_EQ(screens->all().size(), 1U);
    split("1920/0x1080/0+0+0", "1600/0x900/0+1920+360");
    EXPECT_TRUE(EventLoop::waitUntil([&] {
        const auto all = screens->all();
        return all.size() == 2 && all[0].frame.size() == Size{1600, 900};
    }));
}

TEST_F(X11ScreensTests, ReadableFromAnotherThread) {
    start();
    const auto bar = panel.open({0, 0, 3520, 24});
    panel.setProperty(bar, "_NET_WM_STRUT", "CARDINAL", {0, 0, 24, 0});
    panel.setProperty(0, "_NET_CLIENT_LIST", "WINDOW", {bar});
    std::atomic<bool> ended = false;
    std::thread reader([&] {
        while (!ended) {
            EXPECT_EQ(screens->all().size(), 1U);
        }
    });
    EXPECT_TRUE(becomesVisible(0, {0, 0, 3520, 1236}));
    ended = true;
    reader.join();
}

}  // namespace
}  // namespace velmora
