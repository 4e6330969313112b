// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11Compositor.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "Tests/Contracts/X11/Support/EventLoop.h"
#include "Tests/Contracts/X11/Support/PrivateServer.h"
#include "Tests/Contracts/X11/Support/TestApplication.h"

namespace velmora {
namespace {

using test::EventLoop;
using test::PrivateServer;
using test::TestApplication;

class X11CompositorTests : public ::testing::Test {
  protected:
    Compositor::Observer recorder() {
        return [this](bool compositing) { seen.push_back(compositing); };
    }

    EventLoop loop;
    PrivateServer server;
    std::vector<bool> seen;
};

TEST_F(X11CompositorTests, NoneAtFirst) {
    const X11Compositor compositor(server.display());
    EXPECT_FALSE(compositor.isCompositing());
}

TEST_F(X11CompositorTests, OneThatRunsAlreadyIsSeen) {
    TestApplication manager(server.display());
    manager.run("own _NET_WM_CM_S0");
    const X11Compositor compositor(server.display());
    EXPECT_TRUE(compositor.isCompositing());
}

TEST_F(X11CompositorTests, FollowsItsComingAndGoing) {
    X11Compositor compositor(server.display());
    compositor.observe(recorder());
    auto manager = std::make_unique<TestApplication>(server.display());
    manager->run("own _NET_WM_CM_S0");
    ASSERT_TRUE(EventLoop::waitUntil([&] { return compositor.isCompositing(); }));
    manager->run("disown _NET_WM_CM_S0");
    ASSERT_TRUE(EventLoop::waitUntil([&] { return !compositor.isCompositing(); }));
    manager->run("own _NET_WM_CM_S0");
    ASSERT_TRUE(EventLoop::waitUntil([&] { return compositor.isCompositing(); }));
    manager.reset();  // Its connection ends without a word.
    ASSERT_TRUE(EventLoop::waitUntil([&] { return !compositor.isCompositing(); }));
    EXPECT_EQ(seen, (std::vector<bool>{true, false, true, false}));
}

TEST_F(X11CompositorTests, ASuccessorIsNoChange) {
    TestApplication first(server.display());
    first.run("own _NET_WM_CM_S0");
    X11Compositor compositor(server.display());
    compositor.observe(recorder());
    TestApplication second(server.display());
    second.run("own _NET_WM_CM_S0");
    second.run("disown _NET_WM_CM_S0");
    ASSERT_TRUE(EventLoop::waitUntil([&] { return !compositor.isCompositing(); }));
    EXPECT_EQ(seen, std::vector<bool>{false});
}

TEST_F(X11CompositorTests, AnEmptyObserverEndsIt) {
    X11Compositor compositor(server.display());
    compositor.observe(recorder());
    compositor.observe({});
    TestApplication manager(server.display());
    manager.run("own _NET_WM_CM_S0");
    ASSERT_TRUE(EventLoop::waitUntil([&] { return compositor.isCompositing(); }));
    EXPECT_TRUE(seen.empty());
}

TEST_F(X11CompositorTests, FollowsARealOne) {
    X11Compositor compositor(server.display());
    QProcess& picom = server.launch("picom", {"--backend", "xrender", "--config", "/dev/null"});
    ASSERT_TRUE(EventLoop::waitUntil([&] { return compositor.isCompositing(); }));
    picom.terminate();
    ASSERT_TRUE(EventLoop::waitUntil([&] { return !compositor.isCompositing(); }));
}

TEST_F(X11CompositorTests, SurvivesTheServersEnd) {
    X11Compositor compositor(server.display());
    compositor.observe(recorder());
    server.crash();
    EventLoop::settle();
    EXPECT_FALSE(compositor.isCompositing());
    const X11Compositor late(server.display());
    EXPECT_FALSE(late.isCompositing());
}

}  // namespace
}  // namespace velmora
