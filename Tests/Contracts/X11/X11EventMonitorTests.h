// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "Tests/Contracts/X11/Support/EventLoop.h"
#include "Tests/Contracts/X11/Support/PrivateServer.h"
#include "Tests/Contracts/X11/Support/TestApplication.h"
#include "Velmora/Platform/LinuxX11/X11EventMonitor.h"

namespace velmora {

namespace test {

/// Screens that stand as the test says.
class FixedGeometry : public ScreenGeometrySource {
  public:
    ScreenGeometry current() const override { return geometry; }
    ScreenGeometry geometry{{{1, {0, 0, 1600, 1000}, 1, {0, 0, 1600, 1000}}}};
};

}  // namespace test

/// A monitor on a server of its own, with a window of another program and one of ours, and what its
/// handlers were told.
class X11EventMonitorTests : public ::testing::Test {
  protected:
    using Seen = std::vector<std::string>;

    /// Installs the six monitors that the program uses; what they are told is written down.
    void watchEverything() {
        watch("moved", EventMask::mouseMoved);
        watch("down", EventMask::anyMouseDown);
        watch("flags", EventMask::flagsChanged);
    }

    void watch(const std::string& name, EventMask mask) {
        tokens.push_back(monitor.addGlobalMonitor(mask, recorder("global " + name)));
        tokens.push_back(monitor.addLocalMonitor(mask, recorder("local " + name)));
    }

    EventMonitor::Handler recorder(const std::string& name) {
        return [this, name](ModifierFlags flags) {
            seen.push_back(name);
            seenFlags.push_back(flags);
        };
    }

    bool waitFor(std::size_t count) {
        return test::EventLoop::waitUntil([&] { return seen.size() >= count; });
    }

    /// Ends a list of things that must not be told by one that is.
    void pressAtTheEnd() {
        server.press(2);
        server.release(2);
        ASSERT_TRUE(test::EventLoop::waitUntil(
            [&] { return !seen.empty() && seen.back().find("down") != std::string::npos; }));
    }

    test::EventLoop loop;
    test::PrivateServer server;
    test::TestApplication other{server.display(), VELMORA_X11_TEST_CLIENT};
    test::TestApplication ours{server.display()};
    test::FixedGeometry geometry;
    X11EventMonitor monitor{geometry, X11ClientRange(), server.display()};
    std::vector<EventMonitor::Token> tokens;
    std::vector<std::string> seen;
    std::vector<ModifierFlags> seenFlags;
};

}  // namespace velmora
