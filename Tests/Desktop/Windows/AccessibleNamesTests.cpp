// SPDX-License-Identifier: MIT
// The windows of the running program as assistive programs find them on the accessibility bus.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "Tests/Desktop/Support/RunningVelmora.h"
#include "Tests/Desktop/Windows/AccessibleTree.h"
#include "Tests/Desktop/Windows/WindowDesktop.h"

namespace velmora::test {

namespace {

using Names = std::vector<std::string>;

/// What the program tells once that is as awaited. A tree is read piece by piece, and what changes
/// meanwhile is found half in its old state: two readings in turn have to agree.
AccessibleTree awaitTree(const std::function<bool(const AccessibleTree&)>& isAwaited) {
    AccessibleTree tree;
    EXPECT_TRUE(WindowDesktop::get().waitUntil([&] {
        const std::string before = tree.text();
        tree = AccessibleTree::ofProgram("Velmora");
        return isAwaited(tree) && tree.text() == before;
    })) << tree.text();
    return tree;
}

AccessibleTree awaitTree(const std::string& role, const std::string& name) {
    return awaitTree([&](const AccessibleTree& tree) { return tree.find(role, name) != nullptr; });
}

TEST(AccessibleNames, TellEveryControlOfTheSettingsInOrder) {
    const RunningVelmora velmora(WindowDesktop::get());
    ASSERT_EQ(velmora.command({"settings"}).status, 0);
    const AccessibleTree tree = awaitTree("check box", "Share anonymous usage analytics");
    EXPECT_EQ(
        tree.controls(),
        (Names{"check box: Hover lookup enabled", "slider: Dwell delay", "panel: Script preference",
               "check box: Tone colors", "check box: Auto-pronounce on lookup", "slider: Font size",
               "push button: Open Settings, Accessibility",
               "push button: Open Settings, Screen Recording", "push button: Refresh permissions",
               "check box: Share anonymous usage analytics"}))
        << tree.text();
    for (const char* section : {"Lookup", "Popover", "Permissions", "Privacy"}) {
        EXPECT_NE(tree.find("heading", section), nullptr) << section << "\n" << tree.text();
    }
    EXPECT_NE(tree.find("radio button", "Simplified"), nullptr) << tree.text();
    EXPECT_NE(tree.find("radio button", "Traditional"), nullptr);
    EXPECT_NE(tree.find("label", "Granted"), nullptr);
    EXPECT_NE(tree.find("label", "Velmora never sends looked-up text."), nullptr);
}

TEST(AccessibleNames, TellTheStepsOfOnboarding) {
    const RunningVelmora velmora(WindowDesktop::get());
    ASSERT_EQ(velmora.command({"onboarding"}).status, 0);
    const AccessibleTree welcome = awaitTree("heading", "Velmora");
    EXPECT_EQ(welcome.controls(), (Names{"push button: Continue", "push button: Close"}))
        << welcome.text();
    EXPECT_NE(welcome.find("label", "Step 1 of 3"), nullptr) << welcome.text();
    WindowDesktop::get().typeKey("Return");
    const AccessibleTree lookup = awaitTree("heading", "Velmora runs quietly from the menu bar");
    EXPECT_NE(lookup.find("label", "Step 2 of 3"), nullptr);
    WindowDesktop::get().typeKey("Return");
    // While the steps change places, both are showing.
    const AccessibleTree permissions = awaitTree([](const AccessibleTree& tree) {
        return tree.find("heading", "Enable lookup access") != nullptr &&
               tree.find("heading", "Velmora runs quietly from the menu bar") == nullptr;
    });
    EXPECT_EQ(
        permissions.controls(),
        (Names{"push button: Request, Accessibility", "push button: Open Settings, Accessibility",
               "push button: Request, Screen Recording",
               "push button: Open Settings, Screen Recording", "check box: Enable hover lookup",
               "push button: Refresh", "push button: Back", "push button: Done",
               "push button: Close"}))
        << permissions.text();
    EXPECT_NE(permissions.find("label", "Accessibility: Granted"), nullptr) << permissions.text();
}

}  // namespace

}  // namespace velmora::test
