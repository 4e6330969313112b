// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11Compositor.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
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

TEST_F(X11CompositorTests, AStepComesBehindAnAnswerAndNobodyWaitsForIt) {
    X11Compositor compositor(server.display());
    int steps = 0;
    {
        const PausedServer paused(server);
        compositor.whenAnswered([&] { ++steps; });
        EventLoop::settle();
        EXPECT_EQ(steps, 0);
        EXPECT_FALSE(paused.wasAwaited());
    }
    EXPECT_TRUE(EventLoop::waitUntil([&] { return steps == 1; }));
}

TEST_F(X11CompositorTests, EachStepHasAnAnswerOfItsOwn) {
    X11Compositor compositor(server.display());
    std::string order;
    std::unique_ptr<PausedServer> paused;
    compositor.whenAnswered([&] {
        order += "a";
        // As one after which a window manager keeps the server for itself.
        paused = std::make_unique<PausedServer>(server);
        compositor.whenAnswered([&] { order += "c"; });
    });
    compositor.whenAnswered([&] { order += "b"; });
    EXPECT_EQ(order, "");
    ASSERT_TRUE(EventLoop::waitUntil([&] { return order == "a"; }));
    EventLoop::settle();
    EXPECT_EQ(order, "a");
    paused.reset();
    EXPECT_TRUE(EventLoop::waitUntil([&] { return order == "abc"; }));
}

TEST_F(X11CompositorTests, WithoutAServerStepsComeAllTheSame) {
    X11Compositor compositor(server.display());
    std::string order;
    {
        const PausedServer paused(server);
        compositor.whenAnswered([&] { order += "a"; });
        compositor.whenAnswered([&] { order += "b"; });
    }
    server.crash();
    EXPECT_TRUE(EventLoop::waitUntil([&] { return order == "ab"; }));
    compositor.whenAnswered([&] { order += "c"; });
    EXPECT_EQ(order, "abc");
    X11Compositor late(server.display());
    late.whenAnswered([&] { order += "d"; });
    EXPECT_EQ(order, "abcd");
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
