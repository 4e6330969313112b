// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Loader/SwitchingStatusItem.h"

#include <gtest/gtest.h>

#include <memory>

namespace velmora {
namespace {

class FakeItem final : public StatusItem {
  public:
    void show(const StatusItemLook& look, StatusItemDelegate& newDelegate) override {
        toolTip = look.toolTip;
        delegate = &newDelegate;
    }
    void hide() override {
        if (delegate != nullptr && open) {
            close();
        }
        delegate = nullptr;
    }
    void mousePressedSomewhere() override { ++presses; }
    void menuChanged() override { ++changes; }

    void openMenu() {
        open = true;
        delegate->menuWillOpen();
    }
    void close() {
        open = false;
        delegate->menuDidClose();
    }

    std::string toolTip;
    StatusItemDelegate* delegate = nullptr;
    bool open = false;
    int presses = 0;
    int changes = 0;
};

class SwitchingStatusItemTest : public ::testing::Test, public StatusItemDelegate {
  protected:
    std::vector<MenuItem> menuNeedsUpdate() override { return {MenuItem::note("here")}; }
    void menuWillOpen() override {
        EXPECT_FALSE(isOpen);
        isOpen = true;
    }
    void menuDidClose() override {
        EXPECT_TRUE(isOpen);
        isOpen = false;
    }
    void show() { item.show({.toolTip = "tip", .accessibilityLabel = {}, .icon = {}}, *this); }

    bool isOpen = false;
    FakeItem* first = new FakeItem;
    FakeItem* fallback = new FakeItem;
    SwitchingStatusItem item{std::unique_ptr<StatusItem>(first),
                             std::unique_ptr<StatusItem>(fallback)};
};

TEST_F(SwitchingStatusItemTest, TheFallbackIsThereOnlyWhileNobodyTakesTheFirst) {
    show();
    EXPECT_NE(first->delegate, nullptr);
    EXPECT_EQ(fallback->delegate, nullptr);
    item.setFirstIsTaken(false);
    ASSERT_NE(fallback->delegate, nullptr);
    EXPECT_EQ(fallback->toolTip, "tip");
    EXPECT_EQ(fallback->delegate->menuNeedsUpdate().size(), 1U);
    EXPECT_NE(first->delegate, nullptr);
    item.setFirstIsTaken(true);
    EXPECT_EQ(fallback->delegate, nullptr);
}

TEST_F(SwitchingStatusItemTest, WhatIsKnownBeforeItIsShownCounts) {
    item.setFirstIsTaken(false);
    EXPECT_EQ(fallback->delegate, nullptr);
    show();
    EXPECT_NE(fallback->delegate, nullptr);
}

TEST_F(SwitchingStatusItemTest, AHostThatComesEndsTheMenuOfTheFallback) {
    show();
    item.setFirstIsTaken(false);
    fallback->openMenu();
    EXPECT_TRUE(isOpen);
    item.setFirstIsTaken(true);
    EXPECT_FALSE(isOpen);
}

TEST_F(SwitchingStatusItemTest, TwoMenusAreOneToTheOwner) {
    show();
    item.setFirstIsTaken(false);
    fallback->openMenu();
    first->openMenu();
    fallback->close();
    EXPECT_TRUE(isOpen);
    first->close();
    EXPECT_FALSE(isOpen);
}

TEST_F(SwitchingStatusItemTest, BothHearOfPressesAndChanges) {
    show();
    item.mousePressedSomewhere();
    item.menuChanged();
    EXPECT_EQ(first->presses + first->changes, 2);
    EXPECT_EQ(fallback->presses + fallback->changes, 2);
}

TEST_F(SwitchingStatusItemTest, HidingTakesBothAway) {
    show();
    item.setFirstIsTaken(false);
    first->openMenu();
    item.hide();
    EXPECT_FALSE(isOpen);
    EXPECT_EQ(first->delegate, nullptr);
    EXPECT_EQ(fallback->delegate, nullptr);
    item.setFirstIsTaken(true);
    item.setFirstIsTaken(false);
    EXPECT_EQ(fallback->delegate, nullptr);
}

}  // namespace
}  // namespace velmora
