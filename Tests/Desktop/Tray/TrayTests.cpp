// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "Tests/Desktop/Tray/PanelStage.h"

// Rectangles are pixels of the X server.
namespace velmora::test {
namespace {

// Inside the first and the last entry of the menu, whoever draws it.
constexpr int first = 16;
constexpr int last = -14;

/// What every panel's user does: looks, switches hovering off and on, quits.
void useTheMenu(PanelStage& stage, const PanelStage::Panel& panel) {
    ASSERT_TRUE(stage.iconIsShown(panel)) << stage.log();
    ASSERT_TRUE(stage.comesToSay("Hover lookup enabled: true"));
    auto menu = stage.openMenu(panel);
    stage.desktop().settledScreenshot(menu.client);
    stage.keepPicture(panel.name);
    stage.clickEntry(menu, first);
    EXPECT_TRUE(stage.menuIsGone(menu));
    EXPECT_TRUE(stage.comesToSay("Hover lookup enabled: false"));
    EXPECT_TRUE(stage.iconIsShown(panel));  // As bright as before.

    menu = stage.openMenu(panel, 3);
    stage.clickEntry(menu, first);
    EXPECT_TRUE(stage.menuIsGone(menu));
    EXPECT_TRUE(stage.comesToSay("Hover lookup enabled: true"));

    menu = stage.openMenu(panel);
    stage.desktop().typeKey("Escape");
    EXPECT_TRUE(stage.menuIsGone(menu));
    EXPECT_EQ(stage.velmora().command({"diagnostics"}).status, 0);

    menu = stage.openMenu(panel);
    stage.clickEntry(menu, last);
    EXPECT_EQ(stage.velmora().process().waitForExit(VirtualDesktop::patience), 0);
    EXPECT_TRUE(stage.iconIsShown(panel, false));
}

TEST(Tint2Test, ARealClickOpensTheMenuAndItsEntriesWork) {
    PanelStage stage;
    stage.start(stage.tint2());
    stage.startVelmora();
    useTheMenu(stage, stage.tint2());
}

TEST(Tint2Test, APanelThatStartsLaterOrAgainGetsTheIcon) {
    PanelStage stage;
    const auto tint2 = stage.tint2();
    stage.startVelmora();
    ChildProcess& panel = stage.start(tint2);
    ASSERT_TRUE(stage.iconIsShown(tint2));
    stage.openMenu(tint2);
    panel.kill();
    ASSERT_TRUE(stage.iconIsShown(tint2, false));
    stage.start(tint2);
    ASSERT_TRUE(stage.iconIsShown(tint2));
    const auto menu = stage.openMenu(tint2);
    stage.clickEntry(menu, first);
    EXPECT_TRUE(stage.comesToSay("Hover lookup enabled: false"));
}

TEST(Xfce4PanelTest, ARealClickOpensTheMenuAndItsEntriesWork) {
    PanelStage stage;
    stage.start(stage.xfce4Panel());
    stage.startVelmora();
    useTheMenu(stage, stage.xfce4Panel());
}

TEST(Xfce4PanelTest, TheItemMovesToAHostThatComesAndBackWhenItLeaves) {
    PanelStage stage;
    const auto tint2 = stage.tint2();
    const auto xfce = stage.xfce4Panel();
    ChildProcess& panel = stage.start(tint2);
    stage.startVelmora();
    ASSERT_TRUE(stage.iconIsShown(tint2));
    ChildProcess& host = stage.start(xfce);
    EXPECT_TRUE(stage.iconIsShown(xfce));
    EXPECT_TRUE(stage.iconIsShown(tint2, false));
    host.kill();
    // The host had taken the embedding of icons from the panel too, which only takes it at its
    // start.
    panel.kill();
    stage.start(tint2);
    ASSERT_TRUE(stage.iconIsShown(tint2));
    const auto menu = stage.openMenu(tint2);
    stage.clickEntry(menu, last);
    EXPECT_EQ(stage.velmora().process().waitForExit(VirtualDesktop::patience), 0);
}

}  // namespace
}  // namespace velmora::test
