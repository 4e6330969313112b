// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <unistd.h>

#include <memory>
#include <string>

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

/// A display of its own that can go while the rest of the desktop stays.
class LoneDisplay {
  public:
    LoneDisplay() {
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        server_ = std::make_unique<ChildProcess>(ChildProcess::Options{
            {"Xvfb", "-displayfd", std::to_string(ends[1]), "-noreset", "-nolisten", "tcp"},
            {{"PATH", "/usr/bin:/bin"}},
            {},
            {},
            ends[1]});
        close(ends[1]);
        char byte = 0;
        while (read(ends[0], &byte, 1) == 1 && byte != '\n') {
            name_ += byte;
        }
        close(ends[0]);
    }
    const std::string& name() const { return name_; }
    void go() { server_->end(); }

  private:
    std::unique_ptr<ChildProcess> server_;
    std::string name_ = ":";
};

TEST(SessionEndTest, WhenTheDisplayServerGoesTheProgramEndsCleanly) {
    VirtualDesktop desktop;
    LoneDisplay display;
    RunningVelmora::Options options;
    options.environment["DISPLAY"] = display.name();
    RunningVelmora velmora(desktop, options);
    display.go();
    EXPECT_EQ(velmora.process().waitForExit(VirtualDesktop::patience), 0) << velmora.log();
    EXPECT_EQ(velmora.log().find("X connection"), std::string::npos) << velmora.log();
}

}  // namespace
}  // namespace velmora::test
