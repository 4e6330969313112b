// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11ScreenCapture.h"

#include <gtest/gtest.h>
#include <xcb/composite.h>
#include <xcb/shape.h>

#include <limits>
#include <memory>

#include "Tests/Contracts/X11/Support/EventLoop.h"
#include "Tests/Contracts/X11/Support/PrivateServer.h"
#include "Tests/Contracts/X11/Support/TestApplication.h"
#include "Velmora/Platform/LinuxX11/X11Compositor.h"
#include "Velmora/Platform/LinuxX11/X11Connection.h"
#include "Velmora/Platform/LinuxX11/X11Ownership.h"
#include "Velmora/Platform/LinuxX11/X11PictureFormats.h"
#include "Velmora/Platform/LinuxX11/X11TopLevels.h"
#include "Velmora/Platform/LinuxX11/X11WindowPictures.h"

namespace velmora {
namespace {

using test::EventLoop;
using test::PrivateServer;
using test::TestApplication;

constexpr std::uint32_t red = 0xFFFF0000;
constexpr std::uint32_t blue = 0xFF0000FF;
constexpr std::uint32_t white = 0xFFFFFFFF;
constexpr std::uint32_t green = 0xFF00FF00;
constexpr std::uint32_t black = 0xFF000000;

class FixedGeometry : public ScreenGeometrySource {
  public:
    ScreenGeometry current() const override { return geometry; }
    ScreenGeometry geometry{{{1, {0, 0, 1600, 1000}, 1, {}}}};
};

class X11ScreenCaptureTests : public ::testing::Test {
  protected:
    Image take(const Rect& rect, std::uint64_t display = 1) {
        return capture.capture(display, rect).value_or(Image());
    }

    std::uint32_t pixelAt(int x, int y) {
        const Image image = take({static_cast<double>(x), static_cast<double>(y), 1, 1});
        return image.isEmpty() ? 0 : image.row(0)[0];
    }

    static std::size_t count(const Image& image, std::uint32_t colour) {
        std::size_t found = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                found += image.row(y)[x] == colour ? 1U : 0U;
            }
        }
        return found;
    }

    /// The real compositing manager, running.
    void startCompositor() {
        X11Compositor compositor(server.display());
        server.launch("picom", {"--backend", "xrender", "--config", "/dev/null"});
        ASSERT_TRUE(EventLoop::waitUntil([&] { return compositor.isCompositing(); }));
    }

    EventLoop loop;
    PrivateServer server;
    FixedGeometry geometry;
    X11ScreenCapture capture{geometry, X11ClientRange(), server.display()};
    TestApplication other{server.display(), VELMORA_X11_TEST_CLIENT};
    TestApplication ours{server.display()};
};

TEST_F(X11ScreenCaptureTests, IsPossibleHere) {
    EXPECT_TRUE(X11ScreenCapture::isPossible(server.display()));
    EXPECT_FALSE(X11ScreenCapture::isPossible(":no-such-display"));
}

TEST_F(X11ScreenCaptureTests, ListsTheDisplays) {
    EXPECT_EQ(capture.displays(), (std::vector<Display>{{1, {0, 0, 1600, 1000}}}));
}

TEST_F(X11ScreenCaptureTests, TakesWhatAWindowShows) {
    const auto window = other.open({100, 100, 600, 400}, {.colour = white});
    other.fill(window, {20, 10, 30, 5}, red);
    const Image image = take({110, 105, 520, 160});
    ASSERT_EQ(image.width(), 520);
    ASSERT_EQ(image.height(), 160);
    EXPECT_EQ(count(image, red), 150U);
    EXPECT_EQ(count(image, white), 520U * 160U - 150U);
    EXPECT_EQ(image.row(5)[10], red);
    EXPECT_EQ(image.row(9)[39], red);
    EXPECT_EQ(image.row(4)[10], white);
    EXPECT_EQ(image.row(5)[40], white);
}

TEST_F(X11ScreenCaptureTests, OurOverlaysAreNotInIt) {
    const auto window = other.open({100, 100, 600, 400}, {.colour = white});
    other.fill(window, {100, 100, 40, 20}, blue);
    ours.open({150, 150, 300, 200}, {.overrideRedirect = true, .colour = red});
    ours.open({160, 160, 100, 100}, {.depth = 32, .overrideRedirect = true, .colour = red});
    const Image image = take({120, 120, 520, 160});
    EXPECT_EQ(count(image, red), 0U);
    EXPECT_EQ(count(image, blue), 800U);
    EXPECT_EQ(count(image, white), 520U * 160U - 800U);
}

TEST_F(X11ScreenCaptureTests, WhatChangesBelowOurOverlayIsSeen) {
    const auto window = other.open({100, 100, 600, 400}, {.colour = white});
    ours.open({150, 150, 300, 200}, {.overrideRedirect = true, .colour = red});
    other.fill(window, {100, 100, 40, 20}, blue);
    EXPECT_EQ(count(take({120, 120, 520, 160}), blue), 800U);
}

TEST_F(X11ScreenCaptureTests, OurWindowInsideAFrameIsNotInIt) {
    other.open({100, 100, 600, 400}, {.colour = white});
    const auto frame = other.open({150, 150, 300, 200}, {.overrideRedirect = true, .colour = blue});
    ours.open({2, 20, 296, 178}, {.parent = frame, .colour = red});
    EXPECT_EQ(count(take({120, 120, 520, 160}), white), 520U * 160U);
}

TEST_F(X11ScreenCaptureTests, FollowsTheStackingOrder) {
    const auto low = other.open({100, 100, 400, 300}, {.colour = white});
    other.open({300, 200, 400, 300}, {.colour = blue});
    const Rect area = {250, 150, 100, 100};
    EXPECT_EQ(count(take(area), blue), 2500U);
    other.run("raise " + std::to_string(low));
    EXPECT_EQ(count(take(area), blue), 0U);
    EXPECT_EQ(count(take(area), white), 10000U);
}

TEST_F(X11ScreenCaptureTests, BordersBelongToTheirWindow) {
    other.open({100, 100, 200, 200}, {.border = 4, .colour = white});
    EXPECT_EQ(pixelAt(100, 100), green);
    EXPECT_EQ(pixelAt(103, 150), green);
    EXPECT_EQ(pixelAt(104, 150), white);
    EXPECT_EQ(pixelAt(303, 150), white);
    EXPECT_EQ(pixelAt(304, 150), green);
}

TEST_F(X11ScreenCaptureTests, ShapedWindowsShowWhatLiesBelow) {
    other.open({100, 100, 400, 300}, {.colour = white});
    const auto shaped = other.open({100, 100, 400, 300}, {.border = 2, .colour = blue});
    other.shapeBounding(shaped, {50, 50, 100, 20});
    const Image image = take({100, 100, 400, 300});
    EXPECT_EQ(count(image, blue), 2000U);
    EXPECT_EQ(image.row(52)[52], blue);
    EXPECT_EQ(image.row(51)[52], white);
    EXPECT_EQ(image.row(52)[51], white);
}

TEST_F(X11ScreenCaptureTests, WithoutACompositorAlphaMeansNothing) {
    other.open({100, 100, 400, 300}, {.colour = white});
    other.open({150, 150, 100, 100}, {.depth = 32, .colour = 0x80800000});
    EXPECT_EQ(pixelAt(200, 200), 0xFF800000);
}

TEST_F(X11ScreenCaptureTests, UnderACompositorWindowsAreBlended) {
    startCompositor();
    other.open({100, 100, 400, 300}, {.colour = white});
    other.open({150, 150, 100, 100}, {.depth = 32, .colour = 0x80800000});
    ours.open({100, 100, 400, 300}, {.overrideRedirect = true, .colour = blue});
    const std::uint32_t blended = pixelAt(200, 200);
    EXPECT_EQ(blended & 0xFFFF0000, red);
    EXPECT_NEAR(blended & 0xFF, 0x7F, 1);
    EXPECT_EQ(pixelAt(300, 300), white);
}

/// Windows for the pointer alone, and windows on their way in or out.
TEST_F(X11ScreenCaptureTests, UnderACompositorWindowsAreSeenAsFarAsTheyAreOpaque) {
    other.open({100, 100, 400, 300}, {.colour = white});
    const auto above = other.open({100, 100, 400, 300}, {.colour = blue});
    const auto setOpacity = [&](std::uint32_t opacity) {
        other.setProperty(above, "_NET_WM_WINDOW_OPACITY", "CARDINAL", {opacity});
    };
    setOpacity(0);
    // Nobody obeys yet.
    EXPECT_EQ(count(take({150, 150, 100, 100}), blue), 10000U);
    startCompositor();
    EXPECT_EQ(count(take({150, 150, 100, 100}), white), 10000U);
    setOpacity(0x80000000);
    const std::uint32_t blended = pixelAt(200, 200);
    EXPECT_EQ(blended & 0xFF0000FF, 0xFF0000FF);
    EXPECT_NEAR(blended >> 16 & 0xFF, 0x7F, 1);
    EXPECT_NEAR(blended >> 8 & 0xFF, 0x7F, 1);
    setOpacity(0xFFFFFFFF);
    EXPECT_EQ(count(take({150, 150, 100, 100}), blue), 10000U);
}

/// The window above all others on which compositing managers draw what everybody sees.
TEST_F(X11ScreenCaptureTests, TheWindowThatCompositorsDrawOnHidesNothing) {
    other.open({100, 100, 400, 300}, {.colour = white});
    X11Connection manager(server.display());
    xcb_connection_t* const c = manager.get();
    ASSERT_TRUE(xcbOwned(
        xcb_composite_query_version_reply(c, xcb_composite_query_version(c, 0, 4), nullptr)));
    const auto overlay = xcbOwned(xcb_composite_get_overlay_window_reply(
        c, xcb_composite_get_overlay_window(c, manager.root()), nullptr));
    ASSERT_TRUE(overlay);
    const auto shown = x11TopLevel(manager, overlay->overlay_win);
    ASSERT_TRUE(shown && shown->frame().contains({300, 250}));
    ours.open({160, 160, 50, 50}, {.overrideRedirect = true, .colour = red});
    EXPECT_EQ(count(take({150, 150, 100, 100}), white), 10000U);
}

/// Without a redirection the server keeps no pictures and refuses to name one.
TEST(X11WindowPicturesTests, WindowsWithoutAPictureAreLeftOut) {
    EventLoop loop;
    PrivateServer server;
    TestApplication other(server.display(), VELMORA_X11_TEST_CLIENT);
    other.open({100, 100, 400, 300}, {.colour = white});
    X11Connection connection(server.display());
    xcb_connection_t* const c = connection.get();
    for (xcb_extension_t* extension : {&xcb_composite_id, &xcb_shape_id}) {
        ASSERT_TRUE(connection.hasExtension(*extension));
    }
    ASSERT_TRUE(xcbOwned(
        xcb_composite_query_version_reply(c, xcb_composite_query_version(c, 0, 4), nullptr)));
    const X11PictureFormats formats(connection);
    X11Ownership ownership(connection, X11ClientRange());
    X11WindowPictures pictures(connection, ownership, formats);
    const Rect area = {150, 150, 100, 100};
    EXPECT_TRUE(pictures.take(area).empty());
    xcb_composite_redirect_subwindows(c, connection.root(), XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    const auto taken = pictures.take(area);
    EXPECT_EQ(taken.size(), 1U);
    pictures.giveBack(taken);
}

TEST_F(X11ScreenCaptureTests, WorksWhenACompositorComesAndGoes) {
    other.open({100, 100, 600, 400}, {.colour = white});
    ours.open({150, 150, 300, 200}, {.overrideRedirect = true, .colour = red});
    X11Compositor compositor(server.display());
    QProcess& picom = server.launch("picom", {"--backend", "xrender", "--config", "/dev/null"});
    ASSERT_TRUE(EventLoop::waitUntil([&] { return compositor.isCompositing(); }));
    EXPECT_EQ(count(take({120, 120, 520, 160}), white), 520U * 160U);
    picom.terminate();
    ASSERT_TRUE(EventLoop::waitUntil([&] { return !compositor.isCompositing(); }));
    EXPECT_EQ(count(take({120, 120, 520, 160}), white), 520U * 160U);
}

TEST_F(X11ScreenCaptureTests, TheAnnouncedBackgroundIsThereAlsoBelowOurs) {
    other.run("background " + std::to_string(blue) + " 1");
    ours.open({150, 150, 300, 200}, {.overrideRedirect = true, .colour = red});
    EXPECT_EQ(count(take({100, 100, 400, 300}), blue), 400U * 300U);
}

TEST_F(X11ScreenCaptureTests, ABackgroundThatWasTakenAwayIsNotUsed) {
    other.run("background " + std::to_string(blue) + " 0");
    other.setProperty(0, "_XROOTPMAP_ID", "PIXMAP", {12345678});
    EXPECT_EQ(count(take({100, 100, 400, 300}), blue), 400U * 300U);
}

TEST_F(X11ScreenCaptureTests, TheBareRootIsTakenButNeverOurs) {
    other.run("background " + std::to_string(blue) + " 0");
    other.open({200, 100, 50, 50}, {.colour = white});
    ours.open({300, 100, 50, 50}, {.overrideRedirect = true, .colour = red});
    const Image image = take({100, 100, 300, 50});
    EXPECT_EQ(count(image, white), 2500U);
    EXPECT_EQ(count(image, red), 0U);
    EXPECT_EQ(count(image, black), 2500U);
    EXPECT_EQ(count(image, blue), 10000U);
}

TEST_F(X11ScreenCaptureTests, ResizedAndReshownWindowsAreTakenAnew) {
    const auto window = other.open({100, 100, 200, 200}, {.colour = white});
    EXPECT_EQ(count(take({100, 100, 400, 300}), white), 40000U);
    other.run("move " + std::to_string(window) + " 120 100 300 200");
    EXPECT_EQ(count(take({100, 100, 400, 300}), white), 60000U);
    other.run("unmap " + std::to_string(window));
    EXPECT_EQ(count(take({100, 100, 400, 300}), white), 0U);
    other.run("map " + std::to_string(window));
    EXPECT_EQ(count(take({100, 100, 400, 300}), white), 60000U);
}

TEST_F(X11ScreenCaptureTests, FineDisplaysGiveTheirNativePixels) {
    geometry.geometry =
        ScreenGeometry({{7, {400, 200, 1200, 800}, 2, {}}, {9, {0, 0, 400, 1000}, 1, {}}});
    const auto window = other.open({400, 200, 1200, 800}, {.colour = white});
    other.fill(window, {100, 60, 10, 10}, red);
    const auto second = other.open({0, 0, 400, 1000}, {.colour = blue});
    other.fill(second, {40, 50, 10, 10}, green);
    const Image image = take({0, 0, 520, 160}, 7);
    ASSERT_EQ(image.width(), 1040);
    ASSERT_EQ(image.height(), 320);
    EXPECT_EQ(image.row(60)[100], red);
    EXPECT_EQ(count(image, red), 100U);
    // The other display, to the left of and above the primary one.
    const Image left = take({-400, -200, 400, 160}, 9);
    ASSERT_EQ(left.width(), 400);
    EXPECT_EQ(left.row(50)[40], green);
    EXPECT_EQ(count(left, green), 100U);
}

TEST_F(X11ScreenCaptureTests, NothingOutsideADisplay) {
    EXPECT_FALSE(capture.capture(1, {2000, 0, 100, 100}));
    EXPECT_FALSE(capture.capture(2, {0, 0, 100, 100}));
    EXPECT_FALSE(capture.capture(1, {0, 0, 0, 100}));
    EXPECT_FALSE(capture.capture(1, {std::numeric_limits<double>::infinity(), 0, 10, 10}));
    EXPECT_FALSE(capture.capture(1, {0, 0, -5, 10}));
}

TEST_F(X11ScreenCaptureTests, TheWholeScreenTwice) {
    other.open({0, 0, 1600, 1000}, {.colour = white});
    for (int i = 0; i < 2; ++i) {
        const Image image = take({0, 0, 1600, 1000});
        EXPECT_EQ(count(image, white), 1600U * 1000U);
        EXPECT_EQ(pixelAt(5, 5), white);
    }
}

TEST_F(X11ScreenCaptureTests, WindowsThatComeAndGoMeanwhile) {
    other.open({0, 0, 1600, 1000}, {.colour = white});
    QProcess& storm = server.launch(VELMORA_X11_TEST_CLIENT, {});
    std::string commands;
    for (int i = 0; i < 400; ++i) {
        commands += "window 0 100 100 300 200 24 0 1 " + std::to_string(blue) + "\n";
    }
    // Every line opens a window; the end of the program takes them all away at once.
    storm.write(commands.c_str());
    storm.closeWriteChannel();
    int taken = 0;
    while (storm.state() != QProcess::NotRunning) {
        const Image image = take({50, 50, 520, 160});
        ASSERT_EQ(image.width(), 520);
        ASSERT_EQ(count(image, white) + count(image, blue), 520U * 160U);
        ++taken;
        EventLoop::handleNow();
    }
    EXPECT_GT(taken, 0);
    EXPECT_EQ(count(take({50, 50, 520, 160}), white), 520U * 160U);
}

TEST_F(X11ScreenCaptureTests, WithoutAServerThereIsNothing) {
    other.open({100, 100, 400, 300});
    ASSERT_FALSE(take({100, 100, 50, 50}).isEmpty());
    server.crash();
    EXPECT_FALSE(capture.capture(1, {100, 100, 50, 50}));
    X11ScreenCapture late(geometry, X11ClientRange(), server.display());
    EXPECT_FALSE(late.capture(1, {100, 100, 50, 50}));
    EXPECT_FALSE(X11ScreenCapture::isPossible(server.display()));
}

}  // namespace
}  // namespace velmora
