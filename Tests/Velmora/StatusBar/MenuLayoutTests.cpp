// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/StatusNotifier/MenuLayout.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

class MenuLayoutTest : public ::testing::Test {
  protected:
    MenuItem command(const std::string& title, int value) {
        return MenuItem::command(title, [this, value] { chosen = value; });
    }
    int idOf(std::size_t place) const {
        return layout.find(MenuLayout::rootId)->children.at(place).id;
    }

    MenuLayout layout;
    int chosen = 0;
};

TEST_F(MenuLayoutTest, IsEmptyAtFirstAndTakesEvenNothingOverOnce) {
    EXPECT_EQ(layout.find(MenuLayout::rootId), nullptr);
    EXPECT_EQ(layout.update({}), MenuLayout::Change::layout);
    ASSERT_NE(layout.find(MenuLayout::rootId), nullptr);
    EXPECT_EQ(layout.update({}), MenuLayout::Change::nothing);
}

TEST_F(MenuLayoutTest, NewContentsGetNewNumbers) {
    layout.update({command("one", 1)});
    const int before = idOf(0);
    const unsigned revision = layout.revision();
    EXPECT_EQ(layout.update({command("two", 2)}), MenuLayout::Change::layout);
    EXPECT_NE(idOf(0), before);
    EXPECT_GT(layout.revision(), revision);
    EXPECT_EQ(layout.find(before), nullptr);
}

TEST_F(MenuLayoutTest, TheSameContentsKeepTheirNumbersAndTakeTheNewActions) {
    layout.update({command("one", 1)});
    const int id = idOf(0);
    EXPECT_EQ(layout.update({command("one", 7)}), MenuLayout::Change::nothing);
    EXPECT_EQ(idOf(0), id);
    (*layout.action(id))();
    EXPECT_EQ(chosen, 7);
}

TEST_F(MenuLayoutTest, AHostThatStillShowsTheContentsBeforeCanChooseFromThem) {
    layout.update({command("one", 1)});
    const int shown = idOf(0);
    layout.update({command("two", 2)});
    ASSERT_TRUE(layout.action(shown));
    (*layout.action(shown))();
    EXPECT_EQ(chosen, 1);
    layout.update({command("three", 3)});
    EXPECT_FALSE(layout.action(shown));
}

TEST_F(MenuLayoutTest, NotesAndStatesChangeInPlace) {
    MenuItem hover = command("Hover lookup", 1);
    hover.checkable = true;
    layout.update({hover, MenuItem::note("Live: off")});
    const int id = idOf(0);
    const unsigned revision = layout.revision();
    hover.checked = true;
    EXPECT_EQ(layout.update({hover, MenuItem::note("Live: ready")}), MenuLayout::Change::looks);
    EXPECT_EQ(idOf(0), id);
    EXPECT_GT(layout.revision(), revision);
    EXPECT_TRUE(layout.find(id)->item.checked);
    EXPECT_EQ(layout.find(idOf(1))->item.title, "Live: ready");
}

TEST_F(MenuLayoutTest, AnEntryThatDoesSomethingElseIsAnotherOne) {
    MenuItem recent;
    recent.title = "Recent";
    recent.children = {command("one", 1)};
    layout.update({recent});
    const int shown = layout.find(idOf(0))->children.at(0).id;
    recent.children = {command("two", 2)};
    EXPECT_EQ(layout.update({recent}), MenuLayout::Change::layout);
    (*layout.action(shown))();
    EXPECT_EQ(chosen, 1);
}

TEST_F(MenuLayoutTest, NotesSeparatorsAndUnknownNumbersHaveNoAction) {
    layout.update({MenuItem::note("note"), MenuItem::separator()});
    EXPECT_FALSE(layout.action(idOf(0)));
    EXPECT_FALSE(layout.action(idOf(1)));
    EXPECT_FALSE(layout.action(MenuLayout::rootId));
    EXPECT_FALSE(layout.action(-1));
    EXPECT_FALSE(layout.action(1 << 30));
}

TEST_F(MenuLayoutTest, AnEntryThatIsDisabledCannotBeChosen) {
    MenuItem item = command("off", 1);
    item.enabled = false;
    layout.update({item});
    EXPECT_FALSE(layout.action(idOf(0)));
}

TEST_F(MenuLayoutTest, ReachesEntriesOfASubmenu) {
    MenuItem recent;
    recent.title = "Recent";
    recent.children = {command("one", 1), command("two", 2)};
    layout.update({MenuItem::separator(), recent});
    const auto& children = layout.find(idOf(1))->children;
    ASSERT_EQ(children.size(), 2U);
    (*layout.action(children[1].id))();
    EXPECT_EQ(chosen, 2);
}

}  // namespace
}  // namespace velmora
