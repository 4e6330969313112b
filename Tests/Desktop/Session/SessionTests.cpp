// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <signal.h>

#include <fstream>
#include <sstream>

#include "Tests/Desktop/Support/HoverStage.h"
#include "Tests/Support/VirtualDesktop/AccessibilityBus.h"

// Rectangles are pixels of the X server.
namespace velmora::test {
namespace {

const ReadProgram& editor() {
    return ReadProgram::named("mousepad");
}

HoverStage::Options leftHalf() {
    HoverStage::Options options;
    options.window = {20, 60, 740, 700};
    return options;
}

TEST(SessionTest, readsAnotherProgramWhileOneIsStopped) {
    HoverStage stage(editor(), leftHalf());
    const std::vector<TextLine> others =
        stage.show(ReadProgram::named("qt-sample"), {840, 60, 740, 700});
    ASSERT_EQ(stage.hover(0, 1).word(), stage.text().word(0, 1).matchedText);
    stage.program().signalAll(SIGSTOP);
    const Hover stopped = stage.hover(2, 4);
    EXPECT_TRUE(stopped.record.is_object()) << "even a stopped program has a record of its dwell";
    const Hover other = stage.hover(others.at(3).middle(1));
    EXPECT_EQ(other.word(), stage.text().word(3, 1).matchedText) << other.record.dump();
    stage.program().signalAll(SIGCONT);
    // It is asked again once it has answered in the background.
    EXPECT_TRUE(stage.desktop().waitUntil([&] {
        stage.leave();
        return stage.hover(4, 8).word() == stage.text().word(4, 8).matchedText;
    }));
}

TEST(SessionTest, keepsPanelsOnTheScreenOfTheWord) {
    HoverStage stage(editor(), [] {
        HoverStage::Options options;
        options.window = {800, 60, 760, 700};
        options.monitors = {{"left", {0, 0, 800, 1000}}, {"right", {800, 0, 800, 1000}}};
        return options;
    }());
    const Hover first = stage.hover(3, 0);
    ASSERT_EQ(first.word(), stage.text().word(3, 0).matchedText) << first.record.dump();
    ASSERT_TRUE(first.popover);
    EXPECT_GE(first.popover->minX(), 800 + 12);
    stage.desktop().pressKey("Shift_L");
    Hover later = first;
    EXPECT_TRUE(stage.desktop().waitUntil([&] {
        stage.collectWindows(later);
        return later.popover && later.popover->height >= 180;
    }));
    stage.desktop().releaseKey("Shift_L");
    // Centred under the word it would reach over to the other screen.
    EXPECT_DOUBLE_EQ(later.popover->minX(), 800 + 12);
}

TEST(SessionTest, beginsOnceALateAccessibilityBusIsThere) {
    VirtualDesktop desktop;
    desktop.enter();
    const pid_t launcher = AccessibilityBus(desktop).launcher();
    // It answers no one for a while, for longer than the program waits at its start. Where a slow
    // machine takes all of that time to start it, there is nothing to see.
    ASSERT_EQ(kill(launcher, SIGSTOP), 0);
    desktop.launch({"sh", "-c", "sleep 3; kill -CONT " + std::to_string(launcher)});
    RunningVelmora velmora(desktop);
    EXPECT_NE(velmora.command({"diagnostics"}).output.find("Live status: Hover lookup ready"),
              std::string::npos);
}

/// Our program comes up beside a process that answers nobody, and finds it once it does.
void startBesideAStopped(VirtualDesktop& desktop, pid_t stopped, const std::string& settings,
                         const std::string& readyStatus) {
    ASSERT_EQ(kill(stopped, SIGSTOP), 0);
    RunningVelmora::Options options;
    options.settings = settings;
    options.readyStatus = readyStatus;
    RunningVelmora velmora(desktop, options);
    // The toolkit would wait 25 s for each answer.
    ASSERT_TRUE(velmora.microsecondsToReady());
    EXPECT_LT(*velmora.microsecondsToReady(), 20'000'000);
    ASSERT_EQ(kill(stopped, SIGCONT), 0);
    if (velmora.command({"diagnostics"}).output.find("Hover lookup enabled: true") !=
        std::string::npos) {
        EXPECT_TRUE(desktop.waitUntil([&] {
            return velmora.command({"diagnostics"})
                       .output.find("Live status: Hover lookup ready") != std::string::npos;
        }));
    }
    EXPECT_EQ(velmora.command({"quit"}).status, 0);
    EXPECT_EQ(velmora.process().waitForExit(VirtualDesktop::patience), 0);
}

TEST(SessionTest, startsBesideAStoppedAccessibilityLauncher) {
    VirtualDesktop desktop;
    desktop.enter();
    AccessibilityBus bus(desktop);
    startBesideAStopped(desktop, bus.launcher(), RunningVelmora::Options().settings,
                        "Live status: Accessibility permission needed");
    // At the first start a window opens at once.
    startBesideAStopped(desktop, bus.launcher(), "", "Hover lookup off");
}

TEST(SessionTest, startsBesideAStoppedAccessibilityRegistry) {
    VirtualDesktop desktop;
    desktop.enter();
    AccessibilityBus bus(desktop);
    startBesideAStopped(desktop, bus.registry(), RunningVelmora::Options().settings,
                        "Hover lookup ready");
}

TEST(SessionTest, startsBesideAStoppedAccessibilityBus) {
    VirtualDesktop desktop;
    desktop.enter();
    AccessibilityBus bus(desktop);
    startBesideAStopped(desktop, bus.daemon(bus.address()), RunningVelmora::Options().settings,
                        "Live status: Accessibility permission needed");
}

TEST(SessionTest, obeysTheCommands) {
    HoverStage stage(editor(), leftHalf());
    ASSERT_EQ(stage.hover(0, 1).word(), stage.text().word(0, 1).matchedText);
    const auto diagnostics = [&] { return stage.velmora().command({"diagnostics"}).output; };
    EXPECT_NE(diagnostics().find("Last hover: Showing pinyin for 我们"), std::string::npos);

    EXPECT_EQ(stage.velmora().command({"toggle"}).status, 0);
    EXPECT_TRUE(stage.waitForWindows(0));
    EXPECT_NE(diagnostics().find("Hover lookup enabled: false"), std::string::npos);
    std::ostringstream settings;
    settings << std::ifstream(stage.velmora().settingsFile()).rdbuf();
    EXPECT_NE(settings.str().find("hoverLookupEnabled=false"), std::string::npos);

    EXPECT_EQ(stage.velmora().command({"toggle"}).status, 0);
    EXPECT_NE(diagnostics().find("Live status: Hover lookup ready"), std::string::npos);
    EXPECT_EQ(stage.hover(2, 1).word(), stage.text().word(2, 1).matchedText);

    // A second start ends at once and leaves the first alone.
    EXPECT_EQ(stage.velmora().command({}).status, 0);
    EXPECT_TRUE(stage.velmora().process().isRunning());

    EXPECT_EQ(stage.velmora().command({"quit"}).status, 0);
    EXPECT_EQ(stage.velmora().process().waitForExit(VirtualDesktop::patience), 0);
    EXPECT_EQ(stage.velmora().command({"diagnostics"}).status, 1);
}

TEST(SessionTest, endsAtATerminationSignal) {
    HoverStage stage(editor(), leftHalf());
    ASSERT_TRUE(stage.hover(0, 1).popover);
    kill(stage.velmora().pid(), SIGTERM);
    EXPECT_EQ(stage.velmora().process().waitForExit(VirtualDesktop::patience), 0);
    EXPECT_TRUE(stage.waitForWindows(0));
}

}  // namespace
}  // namespace velmora::test
