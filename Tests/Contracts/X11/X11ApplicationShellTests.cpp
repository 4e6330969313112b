// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11ApplicationShell.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QRasterWindow>
#include <algorithm>
#include <memory>

#include "Tests/Contracts/X11/Support/EventLoop.h"
#include "Tests/Contracts/X11/Support/PrivateServer.h"
#include "Tests/Contracts/X11/Support/TestApplication.h"
#include "Velmora/Platform/LinuxX11/X11Connection.h"

namespace velmora {
namespace {

using test::EventLoop;
using test::PrivateServer;
using test::TestApplication;

class X11ApplicationShellTests : public ::testing::Test {
  protected:
    void SetUp() override { server.startWindowManager(); }

    std::vector<std::uint32_t> rootProperty(const char* name, xcb_atom_t type) {
        return connection.property(connection.root(), connection.atom(name), type, 64);
    }

    bool skipsTaskbar(const QWindow& window) {
        const auto states =
            connection.property(static_cast<xcb_window_t>(window.winId()),
                                connection.atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 64);
        const auto has = [&](const char* name) {
            return std::find(states.begin(), states.end(), connection.atom(name)) != states.end();
        };
        return has("_NET_WM_STATE_SKIP_TASKBAR") && has("_NET_WM_STATE_SKIP_PAGER");
    }

    bool isListed(const QWindow& window) {
        const auto list = rootProperty("_NET_CLIENT_LIST", XCB_ATOM_WINDOW);
        return std::find(list.begin(), list.end(), window.winId()) != list.end();
    }

    bool isActive(const QWindow& window) {
        const auto active = rootProperty("_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW);
        return !active.empty() && active[0] == window.winId();
    }

    PrivateServer server;
    EventLoop loop{server.display()};
    X11Connection connection{server.display()};
    X11ApplicationShell shell;
};

TEST_F(X11ApplicationShellTests, AnAccessoryHasNoTaskbarEntry) {
    QRasterWindow window;
    window.resize(300, 200);
    window.show();
    ASSERT_TRUE(EventLoop::waitUntil([&] { return isListed(window); }));
    EXPECT_TRUE(EventLoop::waitUntil([&] { return skipsTaskbar(window); }));
    // Also when it comes back.
    window.hide();
    ASSERT_TRUE(EventLoop::waitUntil([&] { return !isListed(window); }));
    window.show();
    ASSERT_TRUE(EventLoop::waitUntil([&] { return isListed(window); }));
    EXPECT_TRUE(EventLoop::waitUntil([&] { return skipsTaskbar(window); }));
}

TEST_F(X11ApplicationShellTests, ARegularProgramHasOne) {
    shell.setActivationPolicy(ApplicationShell::ActivationPolicy::regular);
    QRasterWindow window;
    window.resize(300, 200);
    window.show();
    ASSERT_TRUE(EventLoop::waitUntil([&] { return isListed(window); }));
    EXPECT_FALSE(skipsTaskbar(window));
}

TEST_F(X11ApplicationShellTests, WindowsThatAreOpenFollowThePolicy) {
    QRasterWindow window;
    window.resize(300, 200);
    window.show();
    ASSERT_TRUE(EventLoop::waitUntil([&] { return isListed(window) && skipsTaskbar(window); }));
    shell.setActivationPolicy(ApplicationShell::ActivationPolicy::regular);
    EXPECT_TRUE(EventLoop::waitUntil([&] { return !skipsTaskbar(window); }));
    shell.setActivationPolicy(ApplicationShell::ActivationPolicy::accessory);
    EXPECT_TRUE(EventLoop::waitUntil([&] { return skipsTaskbar(window); }));
}

TEST_F(X11ApplicationShellTests, OtherStatesStay) {
    QRasterWindow window;
    window.resize(300, 200);
    window.setFlag(Qt::WindowStaysOnTopHint);
    window.show();
    ASSERT_TRUE(EventLoop::waitUntil([&] { return isListed(window) && skipsTaskbar(window); }));
    const auto states = connection.property(static_cast<xcb_window_t>(window.winId()),
                                            connection.atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 64);
    EXPECT_NE(std::find(states.begin(), states.end(), connection.atom("_NET_WM_STATE_ABOVE")),
              states.end());
}

TEST_F(X11ApplicationShellTests, TheToolkitLearnsThatAWindowIsPutAway) {
    QRasterWindow window;
    window.resize(300, 200);
    window.show();
    ASSERT_TRUE(EventLoop::waitUntil([&] { return isListed(window) && window.isExposed(); }));
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = static_cast<xcb_window_t>(window.winId());
    message.type = connection.atom("WM_CHANGE_STATE");
    message.data.data32[0] = 3;  // To an icon.
    xcb_send_event(connection.get(), 0, connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(connection.get());
    EXPECT_TRUE(EventLoop::waitUntil([&] { return window.windowState() == Qt::WindowMinimized; }));
}

TEST_F(X11ApplicationShellTests, ActivatesOverAnotherProgram) {
    QRasterWindow window;
    window.resize(300, 200);
    window.show();
    ASSERT_TRUE(EventLoop::waitUntil([&] { return isListed(window); }));
    TestApplication other(server.display(), VELMORA_X11_TEST_CLIENT);
    const auto foreign = other.open({0, 0, 600, 400});
    ASSERT_TRUE(EventLoop::waitUntil([&] {
        const auto active = rootProperty("_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW);
        return !active.empty() && active[0] == foreign;
    }));
    shell.activateIgnoringOtherApplications();
    EXPECT_TRUE(EventLoop::waitUntil([&] { return isActive(window); }));
}

TEST_F(X11ApplicationShellTests, TheWindowShownLastIsActivatedLast) {
    QRasterWindow first;
    first.resize(300, 200);
    QRasterWindow second;
    second.resize(300, 200);
    second.show();
    ASSERT_TRUE(EventLoop::waitUntil([&] { return isListed(second); }));
    first.show();
    ASSERT_TRUE(EventLoop::waitUntil([&] { return isListed(first); }));
    second.requestActivate();
    ASSERT_TRUE(EventLoop::waitUntil([&] { return isActive(second); }));
    shell.activateIgnoringOtherApplications();
    EXPECT_TRUE(EventLoop::waitUntil([&] { return isActive(first); }));
}

TEST_F(X11ApplicationShellTests, PanelsAreLeftAlone) {
    QRasterWindow panel;
    panel.resize(300, 200);
    panel.setFlags(Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    panel.show();
    EventLoop::settle();
    EXPECT_FALSE(skipsTaskbar(panel));
    shell.activateIgnoringOtherApplications();
    EventLoop::settle();
    EXPECT_FALSE(isActive(panel));
}

TEST_F(X11ApplicationShellTests, TerminatesAfterTheCurrentEvent) {
    bool ended = false;
    QMetaObject::invokeMethod(
        qGuiApp,
        [&] {
            shell.terminate();
            ended = true;  // Still running.
        },
        Qt::QueuedConnection);
    EXPECT_EQ(QGuiApplication::exec(), 0);
    EXPECT_TRUE(ended);
}

}  // namespace
}  // namespace velmora
