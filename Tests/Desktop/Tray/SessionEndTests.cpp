// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "Tests/Desktop/Support/RunningVelmora.h"
#include "Tests/Desktop/Tray/TestSessionManager.h"

namespace velmora::test {
namespace {

TEST(SessionEndTest, WhenTheUserLogsOutTheProgramSavesAndEndsCleanly) {
    VirtualDesktop desktop;
    TestSessionManager manager;
    RunningVelmora::Options options;
    options.environment["SESSION_MANAGER"] = manager.address();
    RunningVelmora velmora(desktop, options);
    ASSERT_TRUE(desktop.waitUntil([&] { return manager.clients() == 1; }));
    constexpr int never = 3;
    EXPECT_TRUE(desktop.waitUntil([&] { return manager.restartStyle() == never; }))
        << manager.restartStyle();
    manager.logOut();
    ASSERT_TRUE(desktop.waitUntil([&] { return manager.everybodySaved(); }));
    EXPECT_EQ(velmora.process().waitForExit(VirtualDesktop::patience), 0) << velmora.log();
}

}  // namespace
}  // namespace velmora::test
