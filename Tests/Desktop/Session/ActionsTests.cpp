// SPDX-License-Identifier: MIT
// The actions of the desktop file, as a desktop's menu of the program runs them.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "Tests/Desktop/Support/Clipboard.h"
#include "Tests/Desktop/Support/RunningVelmora.h"

namespace velmora::test {
namespace {

constexpr const char* desktopFile = VELMORA_SOURCE_FOLDER "/Packaging/com.velmora.Velmora.desktop";

/// The class of windows by which desktops know whose they are, as the desktop file has it.
std::string windowClass() {
    std::ifstream file(desktopFile);
    const std::string key = "StartupWMClass=";
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(key)) {
            return line.substr(key.size());
        }
    }
    return {};
}

/// The command of each action by its name, the program's own name left out.
std::map<std::string, std::vector<std::string>> actions() {
    std::ifstream file(desktopFile);
    std::map<std::string, std::vector<std::string>> found;
    const std::string group = "[Desktop Action ";
    std::string action;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('[')) {
            action = line.starts_with(group)
                         ? line.substr(group.size(), line.size() - group.size() - 1)
                         : "";
        } else if (line.starts_with("Exec=") && !action.empty()) {
            std::istringstream words(line.substr(5));
            std::string word;
            words >> word;
            EXPECT_EQ(word, "velmora");
            while (words >> word) {
                found[action].push_back(word);
            }
        }
    }
    return found;
}

TEST(SessionTest, theActionsOfTheDesktopFileReachTheProgram) {
    VirtualDesktop desktop;
    desktop.enter();
    RunningVelmora velmora(desktop);
    const auto commands = actions();
    ASSERT_EQ(commands.size(), 5U);
    const auto run = [&](const char* action) { return velmora.command(commands.at(action)); };
    const auto isShown = [&](const std::string& title) {
        return desktop.waitUntil([&] {
            const auto windows = velmora.windows();
            return std::ranges::any_of(windows,
                                       [&](const auto& window) { return window.title == title; });
        });
    };

    EXPECT_EQ(run("settings").status, 0);
    EXPECT_TRUE(isShown("Velmora Settings"));
    EXPECT_NE(desktop.run({"xprop", "-name", "Velmora Settings", "WM_CLASS"})
                  .find(", \"" + windowClass() + "\""),
              std::string::npos);
    EXPECT_EQ(run("onboarding").status, 0);
    EXPECT_TRUE(isShown("Velmora Onboarding"));
    EXPECT_EQ(run("toggle").output, "Hover lookup off\n");
    EXPECT_EQ(run("toggle").output, "Hover lookup on\n");

    const std::string diagnostics = velmora.command({"diagnostics"}).output;
    EXPECT_NE(diagnostics.find("Live status: Hover lookup ready"), std::string::npos);
    const auto copied = run("diagnostics");
    EXPECT_EQ(copied.status, 0);
    EXPECT_EQ(copied.output, "") << "it is on the clipboard instead";
    EXPECT_EQ(clipboardText(desktop), diagnostics);

    EXPECT_EQ(run("quit").status, 0);
    EXPECT_EQ(velmora.process().waitForExit(VirtualDesktop::patience), 0);
    for (const auto& [action, command] : commands) {
        EXPECT_EQ(velmora.command(command).status, 1) << action;
    }
}

}  // namespace
}  // namespace velmora::test
