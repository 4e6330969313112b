// SPDX-License-Identifier: MIT
#include "Tests/Support/VirtualDesktop/VirtualDesktop.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <thread>

#include "Tests/Support/VirtualDesktop/ProcessTable.h"

namespace velmora::test {
namespace {

TEST(VirtualDesktop, startsAProgramAndShowsItsWindow) {
    VirtualDesktop desktop;
    const auto file = desktop.writeFile("text.txt", "你好，世界\n");
    ChildProcess& editor = desktop.launch({"mousepad", file.string()});
    const VirtualDesktop::Window window = desktop.waitForWindowOf(editor);
    EXPECT_TRUE(editor.owns(window.processId));
    desktop.placeWindow(window.id, {200, 120, 700, 400});
    const Image image = desktop.settledScreenshot({200, 120, 700, 400});
    EXPECT_EQ(image.width(), 700);
    EXPECT_NE(window.title.find("text.txt"), std::string::npos) << window.title;
}

TEST(VirtualDesktop, givesTheFocusToWhatOpensFirst) {
    VirtualDesktop desktop;
    const std::uint64_t before = desktop.focusedWindow();
    ChildProcess& editor = desktop.launch({"mousepad"});
    desktop.waitForWindowOf(editor);
    // The program may hand it on to a window inside its own.
    EXPECT_TRUE(desktop.waitUntil([&] {
        const std::uint64_t focused = desktop.focusedWindow();
        return focused != before && focused > 1;
    }));
}

TEST(VirtualDesktop, leavesNothingBehind) {
    std::filesystem::path folder;
    pid_t program = 0;
    {
        VirtualDesktop desktop;
        folder = desktop.folder();
        ChildProcess& sleeper = desktop.launch({"sh", "-c", "sleep 1000 & exec sleep 1000"});
        program = sleeper.pid();
        sleeper.signalAll(SIGSTOP);
        ASSERT_EQ(::kill(program, 0), 0);
    }
    EXPECT_EQ(::kill(program, 0), -1);
    EXPECT_FALSE(std::filesystem::exists(folder));
}

/// Waits until so many processes are in this session.
bool comesToHave(pid_t session, std::ptrdiff_t count) {
    const auto deadline = std::chrono::steady_clock::now() + VirtualDesktop::patience;
    while (std::chrono::steady_clock::now() < deadline) {
        const auto pids = ProcessTable::all();
        if (std::ranges::count_if(pids, [&](pid_t pid) {
                const auto line = ProcessTable::line(pid);
                return line && line->session == session;
            }) == count) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

TEST(VirtualDesktop, leavesNothingBehindWhereTheTestIsKilled) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t test = fork();
    if (test == 0) {
        const ChildProcess sleeper(ChildProcess::Options{
            {"sh", "-c", "sleep 1000 & exec sleep 1000"}, {{"PATH", "/usr/bin:/bin"}}, {}, {}, -1});
        const pid_t pid = sleeper.pid();
        [[maybe_unused]] const ssize_t sent = write(ends[1], &pid, sizeof pid);
        for (;;) {
            pause();
        }
    }
    pid_t session = 0;
    ASSERT_EQ(read(ends[0], &session, sizeof session), static_cast<ssize_t>(sizeof session));
    EXPECT_TRUE(comesToHave(session, 2));
    kill(test, SIGKILL);
    waitpid(test, nullptr, 0);
    EXPECT_TRUE(comesToHave(session, 0));
    close(ends[0]);
    close(ends[1]);
}

TEST(VirtualDesktop, switchesTheAccessibilityBusOn) {
    VirtualDesktop desktop;
    const std::string reply = desktop.run(
        {"dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus",
         "org.freedesktop.DBus.Properties.Get", "string:org.a11y.Status", "string:IsEnabled"});
    EXPECT_NE(reply.find("boolean true"), std::string::npos) << reply;
}

TEST(VirtualDesktop, givesItsVariablesToTheTestAndTakesThemBack) {
    const char* display = std::getenv("DISPLAY");
    const std::optional<std::string> before =
        display == nullptr ? std::nullopt : std::optional<std::string>(display);
    {
        VirtualDesktop desktop;
        desktop.enter();
        EXPECT_EQ(std::getenv("DISPLAY"), desktop.display());
        EXPECT_EQ(std::getenv("DBUS_SESSION_BUS_ADDRESS"), desktop.sessionBusAddress());
    }
    display = std::getenv("DISPLAY");
    EXPECT_EQ(before, display == nullptr ? std::nullopt : std::optional<std::string>(display));
}

TEST(VirtualDesktop, saysWhichProgramIsMissing) {
    VirtualDesktop desktop({.windowManager = false, .accessibility = false, .serverArguments = {}});
    try {
        desktop.launch({"no-such-program-anywhere"});
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find("no-such-program-anywhere"), std::string::npos);
    }
}

TEST(VirtualDesktop, passesOverWhatDeadServersLeft) {
    const char* variable = std::getenv("VELMORA_TEST_DISPLAY");
    const std::optional<std::string> before =
        variable == nullptr ? std::nullopt : std::optional<std::string>(variable);
    // A number that nobody uses, with the lock of a server that is gone and cannot be read.
    int number = 180;
    const auto lock = [&] { return "/tmp/.X" + std::to_string(number) + "-lock"; };
    while (std::filesystem::exists(lock()) && number < 240) {
        ++number;
    }
    std::ofstream(lock()) << "no process";
    setenv("VELMORA_TEST_DISPLAY", std::to_string(number).c_str(), 1);
    {
        VirtualDesktop desktop(
            {.windowManager = false, .accessibility = false, .serverArguments = {}});
        EXPECT_TRUE(desktop.windows().empty());
        EXPECT_GE(std::stoi(desktop.display().substr(1)), number);
    }
    std::filesystem::remove(lock());
    if (before) {
        setenv("VELMORA_TEST_DISPLAY", before->c_str(), 1);
    } else {
        unsetenv("VELMORA_TEST_DISPLAY");
    }
}

}  // namespace
}  // namespace velmora::test
