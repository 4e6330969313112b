// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "Tests/Support/Contracts/StatusItemStage.h"
#include "Tests/Support/EventLoop.h"

namespace velmora {

/// What holds for every tray item. Instantiate it with one subject for each backend.
class StatusItemContract : public ::testing::TestWithParam<StatusItemSubject>,
                           public StatusItemDelegate {
  protected:
    StatusItemContract() : stage(GetParam().make()) {
        hover = MenuItem::command("Hover lookup", [this] { note("hover"); });
        hover.checkable = true;
        hover.checked = true;
        recent.title = "Recent";
        recent.children = {MenuItem::command("知道  zhī dào", [this] { note("recent"); })};
    }
    ~StatusItemContract() override { stage->item().hide(); }

    std::vector<MenuItem> menuNeedsUpdate() override {
        return {hover,
                MenuItem::note(live),
                MenuItem::separator(),
                recent,
                MenuItem::command("R&D _x", [this] { note("odd"); }),
                MenuItem::command("Quit Velmora", [this] { note("quit"); })};
    }
    void menuWillOpen() override {
        EXPECT_FALSE(isOpen);
        isOpen = true;
        ++openings;
    }
    void menuDidClose() override {
        EXPECT_TRUE(isOpen);
        isOpen = false;
    }

    /// What was done, with whether the menu was still there.
    void note(const std::string& what) { done = isOpen ? what + " too early" : what; }

    void show() { stage->item().show(look, *this); }
    void start() {
        stage->startTray();
        show();
        ASSERT_TRUE(testing::waitUntil([this] { return stage->isInTray(); }));
    }
    bool comesToBeOpen(bool open) {
        return testing::waitUntil([this, open] { return isOpen == open; });
    }
    bool comesToShow(const std::vector<std::string>& titles) {
        return testing::waitUntil([&] { return stage->shown() == titles; });
    }
    bool comesToDo(const std::string& what) {
        return testing::waitUntil([&] { return done == what; });
    }

    const std::vector<std::string> asMade{"✓Hover lookup", "(Live: ready)",   "-",
                                          "Recent",        "  知道  zhī dào", "R&D _x",
                                          "Quit Velmora"};
    StatusItemLook look{
        .toolTip = "Velmora",
        .accessibilityLabel = "Velmora",
        .icon = {{.width = 2, .height = 2, .pixels = std::vector<std::uint32_t>(4, 0xFFFF0000U)}}};
    MenuItem hover;
    MenuItem recent;
    std::string live = "Live: ready";
    std::string done;
    bool isOpen = false;
    int openings = 0;
    std::unique_ptr<StatusItemStage> stage;
};

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(StatusItemContract);

TEST_P(StatusItemContract, ShowsTheEntriesInTheirOrderWithTheirTextsAndStates) {
    start();
    stage->openMenu();
    ASSERT_TRUE(comesToBeOpen(true));
    comesToShow(asMade);
    EXPECT_EQ(stage->shown(), asMade);
}

TEST_P(StatusItemContract, AsksForTheEntriesWhenTheMenuOpens) {
    start();
    live = "Live: off";
    hover.checked = false;
    stage->openMenu();
    ASSERT_TRUE(comesToBeOpen(true));
    ASSERT_TRUE(testing::waitUntil([this] { return stage->shown().size() == asMade.size(); }));
    EXPECT_EQ(stage->shown().at(0), "Hover lookup");
    EXPECT_EQ(stage->shown().at(1), "(Live: off)");
}

TEST_P(StatusItemContract, TellsThatTheMenuOpensAndCloses) {
    start();
    for (int round = 1; round <= 3; ++round) {
        stage->openMenu();
        EXPECT_TRUE(comesToBeOpen(true));
        stage->closeMenu();
        EXPECT_TRUE(comesToBeOpen(false));
        EXPECT_EQ(openings, round);
    }
    EXPECT_EQ(done, "");
}

TEST_P(StatusItemContract, AChosenEntryDoesItsWorkOnceTheMenuIsGone) {
    start();
    stage->openMenu();
    ASSERT_TRUE(comesToBeOpen(true));
    EXPECT_TRUE(stage->choose("Quit Velmora"));
    EXPECT_TRUE(comesToDo("quit")) << done;
    stage->openMenu();
    ASSERT_TRUE(comesToBeOpen(true));
    EXPECT_TRUE(stage->choose("R&D _x"));
    EXPECT_TRUE(comesToDo("odd")) << done;
}

TEST_P(StatusItemContract, EntriesOfASubmenuCanBeChosen) {
    start();
    stage->openMenu();
    ASSERT_TRUE(comesToBeOpen(true));
    EXPECT_TRUE(stage->choose("知道  zhī dào"));
    EXPECT_TRUE(comesToDo("recent")) << done;
}

TEST_P(StatusItemContract, NotesCannotBeChosen) {
    start();
    stage->openMenu();
    ASSERT_TRUE(comesToBeOpen(true));
    stage->choose("Live: ready");
    stage->closeMenu();
    EXPECT_TRUE(comesToBeOpen(false));
    EXPECT_EQ(done, "");
}

TEST_P(StatusItemContract, AnOpenMenuShowsWhatChanges) {
    start();
    stage->openMenu();
    ASSERT_TRUE(comesToBeOpen(true));
    comesToShow(asMade);
    live = "Live: off";
    hover.checked = false;
    stage->item().menuChanged();
    auto expected = asMade;
    expected[0] = "Hover lookup";
    expected[1] = "(Live: off)";
    EXPECT_TRUE(comesToShow(expected)) << ::testing::PrintToString(stage->shown());
    recent.children.insert(recent.children.begin(),
                           MenuItem::command("学习  xué xí", [this] { note("newer"); }));
    stage->item().menuChanged();
    expected.insert(expected.begin() + 4, "  学习  xué xí");
    EXPECT_TRUE(comesToShow(expected)) << ::testing::PrintToString(stage->shown());
    EXPECT_TRUE(stage->choose("学习  xué xí"));
    EXPECT_TRUE(comesToDo("newer")) << done;
}

TEST_P(StatusItemContract, WhatChangesInAClosedMenuIsThereWhenItOpens) {
    start();
    recent.children.clear();
    recent.enabled = false;
    stage->item().menuChanged();
    stage->openMenu();
    ASSERT_TRUE(comesToBeOpen(true));
    EXPECT_TRUE(
        comesToShow({"✓Hover lookup", "(Live: ready)", "-", "(Recent)", "R&D _x", "Quit Velmora"}))
        << ::testing::PrintToString(stage->shown());
}

TEST_P(StatusItemContract, AppearsInATrayThatComesLater) {
    show();
    stage->startTray();
    EXPECT_TRUE(testing::waitUntil([this] { return stage->isInTray(); }));
    stage->openMenu();
    EXPECT_TRUE(comesToBeOpen(true));
}

TEST_P(StatusItemContract, AppearsAgainInATrayThatDiedAndCameBack) {
    start();
    stage->loseTray();
    stage->startTray();
    EXPECT_TRUE(testing::waitUntil([this] { return stage->isInTray(); }));
    stage->openMenu();
    EXPECT_TRUE(comesToBeOpen(true));
    EXPECT_TRUE(stage->choose("Quit Velmora"));
    EXPECT_TRUE(comesToDo("quit")) << done;
}

TEST_P(StatusItemContract, ATrayThatDiesWithTheMenuOpenDoesNotKeepItOpen) {
    start();
    stage->openMenu();
    ASSERT_TRUE(comesToBeOpen(true));
    stage->loseTray();
    EXPECT_TRUE(comesToBeOpen(false));
}

TEST_P(StatusItemContract, APressElsewhereClosesTheMenu) {
    start();
    stage->openMenu();
    ASSERT_TRUE(comesToBeOpen(true));
    stage->item().mousePressedSomewhere();
    EXPECT_TRUE(comesToBeOpen(false));
    stage->item().mousePressedSomewhere();  // And nothing where none is open.
}

TEST_P(StatusItemContract, HidingEndsTheMenuAndTakesTheItemAway) {
    start();
    stage->openMenu();
    ASSERT_TRUE(comesToBeOpen(true));
    stage->item().hide();
    EXPECT_FALSE(isOpen);
    EXPECT_TRUE(testing::waitUntil([this] { return !stage->isInTray(); }));
    stage->item().menuChanged();
    stage->item().hide();
    show();
    EXPECT_TRUE(testing::waitUntil([this] { return stage->isInTray(); }));
}

}  // namespace velmora
