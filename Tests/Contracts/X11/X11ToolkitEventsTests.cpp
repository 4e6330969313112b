// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11ToolkitEvents.h"

#include <gtest/gtest.h>

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QWindow>
#include <cstring>
#include <vector>

#include "Tests/Contracts/X11/Support/EventLoop.h"
#include "Tests/Contracts/X11/Support/PausedServer.h"
#include "Tests/Contracts/X11/Support/PrivateServer.h"
#include "Tests/Contracts/X11/Support/TestApplication.h"

namespace velmora {
namespace {

using test::EventLoop;
using test::PausedServer;
using test::PrivateServer;
using test::TestApplication;

/// A window that notes what it is told of keys and of the pointer, and shows nothing.
class NotingWindow : public QWindow {
  public:
    explicit NotingWindow(Qt::WindowFlags flags = Qt::Window) {
        setFlags(flags);
        setGeometry(100, 100, 300, 200);
    }

    std::vector<int> keys;
    bool isEntered = false;
    bool wasEntered = false;

  protected:
    void keyPressEvent(QKeyEvent* event) override { keys.push_back(event->key()); }
    bool event(QEvent* event) override {
        if (event->type() == QEvent::Enter || event->type() == QEvent::Leave) {
            isEntered = event->type() == QEvent::Enter;
            wasEntered = wasEntered || isEntered;
        }
        return QWindow::event(event);
    }
};

/// Counts what the toolkit would hear of keyboards: filters that are there later come first.
class KeyboardNews final : public QAbstractNativeEventFilter {
  public:
    explicit KeyboardNews(const X11Connection& connection) {
        constexpr char name[] = "XKEYBOARD";
        const auto reply = xcbOwned(xcb_query_extension_reply(
            connection.get(), xcb_query_extension(connection.get(), sizeof name - 1, name),
            nullptr));
        type_ = reply ? reply->first_event : 0;
        qGuiApp->installNativeEventFilter(this);
    }

    int count() const { return count_; }

    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override {
        constexpr std::uint8_t mapChange = 1;
        const auto& event = *static_cast<xcb_generic_event_t*>(message);
        count_ += event.response_type == type_ && event.pad0 <= mapChange ? 1 : 0;
        return false;
    }

  private:
    std::uint8_t type_ = 0;
    int count_ = 0;
};

/// Notes whether the toolkit would hear from the server that a window has got this width.
class WidthNews final : public QAbstractNativeEventFilter {
  public:
    explicit WidthNews(int width) : width_(width) { qGuiApp->installNativeEventFilter(this); }

    bool hasCome() const { return hasCome_; }

    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override {
        const auto& event = *static_cast<xcb_configure_notify_event_t*>(message);
        hasCome_ =
            hasCome_ || (event.response_type == XCB_CONFIGURE_NOTIFY && event.width == width_);
        return false;
    }

  private:
    int width_;
    bool hasCome_ = false;
};

class X11ToolkitEventsTests : public ::testing::Test {
  protected:
    void show(QWindow& window) {
        window.show();
        ASSERT_TRUE(EventLoop::waitUntil([&] { return window.isExposed(); }));
        settle();
    }

    /// What windows meet when they come is over.
    void settle() {
        awaitServer();
        EventLoop::settle();
    }

    /// What was sent before is done.
    void awaitServer() {
        xcbOwned(xcb_get_input_focus_reply(other.get(), xcb_get_input_focus(other.get()), nullptr));
    }

    /// As somebody else does it, a window manager say.
    void configure(const QWindow& window, std::uint16_t mask, const std::uint32_t* values) {
        xcb_configure_window(other.get(), static_cast<xcb_window_t>(window.winId()), mask, values);
        awaitServer();
    }

    void move(const QWindow& window, std::uint32_t x, std::uint32_t y) {
        const std::uint32_t values[] = {x, y};
        configure(window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, values);
    }

    /// Tells a window where it is, as window managers do.
    void tell(const QWindow& window, QPoint place, QSize size) {
        xcb_configure_notify_event_t event{};
        event.response_type = XCB_CONFIGURE_NOTIFY;
        event.event = event.window = static_cast<xcb_window_t>(window.winId());
        event.x = static_cast<std::int16_t>(place.x());
        event.y = static_cast<std::int16_t>(place.y());
        event.width = static_cast<std::uint16_t>(size.width());
        event.height = static_cast<std::uint16_t>(size.height());
        char bytes[32] = {};
        std::memcpy(bytes, &event, sizeof event);
        xcb_send_event(other.get(), 0, event.window, XCB_EVENT_MASK_NO_EVENT, bytes);
    }

    PrivateServer server;
    EventLoop loop{server.display()};
    X11Connection other{server.display()};
    X11ToolkitEvents events;
};

TEST_F(X11ToolkitEventsTests, APanelsPlaceIsKnownWithoutAQuestion) {
    NotingWindow panel(Qt::ToolTip);
    show(panel);
    move(panel, 320, 210);
    const PausedServer paused(server);
    EXPECT_TRUE(EventLoop::waitUntil([&] { return panel.position() == QPoint(320, 210); }));
    EXPECT_FALSE(paused.wasAwaited());
}

TEST_F(X11ToolkitEventsTests, AWindowsPlaceWithinItsFrameIsAskedForWithoutWaiting) {
    NotingWindow window;
    show(window);
    // What a window manager does without telling of it.
    TestApplication manager(server.display(), VELMORA_X11_TEST_CLIENT);
    const auto frame = manager.open({400, 300, 500, 400});
    xcb_reparent_window(other.get(), static_cast<xcb_window_t>(window.winId()), frame, 0, 0);
    const std::uint32_t values[] = {7, 30, 310};
    configure(window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH, values);
    {
        const PausedServer paused(server);
        EventLoop::settle();
        EXPECT_FALSE(paused.wasAwaited());
        EXPECT_NE(window.width(), 310);
    }
    EXPECT_TRUE(EventLoop::waitUntil([&] { return window.width() == 310; }));
    EXPECT_EQ(window.position(), QPoint(407, 330));
}

TEST_F(X11ToolkitEventsTests, APlaceThatAWindowManagerTellsBehindTheAnswerHolds) {
    NotingWindow window;
    show(window);
    TestApplication manager(server.display(), VELMORA_X11_TEST_CLIENT);
    const auto frame = manager.open({400, 300, 500, 400});
    xcb_reparent_window(other.get(), static_cast<xcb_window_t>(window.winId()), frame, 7, 30);
    settle();
    ASSERT_TRUE(EventLoop::waitUntil([&] { return window.isExposed(); }));
    const WidthNews news(310);
    const std::uint32_t width[] = {310};
    configure(window, XCB_CONFIG_WINDOW_WIDTH, width);
    {
        const PausedServer paused(server);
        ASSERT_TRUE(EventLoop::waitUntil([&] { return news.hasCome(); }));
        ASSERT_FALSE(paused.wasAwaited());
    }
    // The place is asked for, and the server comes to it between what others ask.
    constexpr int rounds = 20;
    for (int round = 0; round < rounds; ++round) {
        awaitServer();
    }
    const std::uint32_t place[] = {450, 340};
    xcb_configure_window(other.get(), frame, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, place);
    tell(window, {457, 370}, {310, 200});
    // The answer reaches the toolkit behind that, and must not be the last word.
    for (int round = 0; round < rounds; ++round) {
        settle();
    }
    EXPECT_TRUE(EventLoop::waitUntil([&] { return window.position() == QPoint(457, 370); }));
    EXPECT_EQ(window.size(), QSize(310, 200));
}

TEST_F(X11ToolkitEventsTests, WhatStateAWindowIsInIsAskedForWithoutWaiting) {
    NotingWindow window;
    show(window);
    const auto set = [&](std::uint32_t state) {
        const std::uint32_t values[] = {state, XCB_WINDOW_NONE};
        const xcb_atom_t name = other.atom("WM_STATE");
        xcb_change_property(other.get(), XCB_PROP_MODE_REPLACE,
                            static_cast<xcb_window_t>(window.winId()), name, name, 32, 2, values);
        awaitServer();
    };
    constexpr std::uint32_t normal = 1;
    constexpr std::uint32_t iconic = 3;
    for (const std::uint32_t state : {normal, iconic, normal}) {
        set(state);
        {
            const PausedServer paused(server);
            EventLoop::settle();
            EXPECT_FALSE(paused.wasAwaited());
        }
        EXPECT_TRUE(EventLoop::waitUntil(
            [&] { return (window.windowState() == Qt::WindowMinimized) == (state == iconic); }));
    }
}

TEST_F(X11ToolkitEventsTests, ThePointerIsMetInANewWindowOnceTheServerHasTime) {
    server.movePointer(200, 200);
    NotingWindow window;
    show(window);
    EXPECT_TRUE(EventLoop::waitUntil([&] { return window.isEntered; }));
    // From then on as ever.
    server.movePointer(800, 800);
    EXPECT_TRUE(EventLoop::waitUntil([&] { return !window.isEntered; }));
    server.movePointer(210, 210);
    EXPECT_TRUE(EventLoop::waitUntil([&] { return window.isEntered; }));
}

TEST_F(X11ToolkitEventsTests, ANewWindowThatLetsClicksThroughStaysSo) {
    server.movePointer(200, 200);
    NotingWindow window(Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                        Qt::WindowDoesNotAcceptFocus | Qt::WindowTransparentForInput);
    show(window);
    NotingWindow last(Qt::ToolTip);
    last.setGeometry(150, 150, 100, 100);
    show(last);
    EXPECT_TRUE(EventLoop::waitUntil([&] { return last.isEntered; }));
    EXPECT_FALSE(window.wasEntered);
}

TEST_F(X11ToolkitEventsTests, AnotherKeyboardWithTheSameLayoutRaisesNoQuestion) {
    NotingWindow window;
    show(window);
    const KeyboardNews news(other);
    constexpr unsigned shift = 0xFFE1;
    server.keyDown(shift);
    server.keyUp(shift);
    const PausedServer paused(server);
    EXPECT_TRUE(EventLoop::waitUntil([&] { return news.count() > 0; }));
    EventLoop::settle();
    EXPECT_FALSE(paused.wasAwaited());
}

TEST_F(X11ToolkitEventsTests, AnotherLayoutIsFollowed) {
    server.startWindowManager();
    NotingWindow window;
    show(window);
    ASSERT_TRUE(EventLoop::waitUntil([&] { return window.isActive(); }));
    const auto press = [&](unsigned keysym) {
        server.keyDown(keysym);
        server.keyUp(keysym);
    };
    press('y');
    ASSERT_TRUE(EventLoop::waitUntil([&] { return window.keys == std::vector<int>{Qt::Key_Y}; }));
    server.run("setxkbmap", {"de"});
    // On the key that was Y before.
    EXPECT_TRUE(EventLoop::waitUntil([&] {
        press('z');
        return window.keys.back() == Qt::Key_Z;
    }));
}

}  // namespace
}  // namespace velmora
