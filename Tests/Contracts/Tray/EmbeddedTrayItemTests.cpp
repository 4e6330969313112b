// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/Tray/EmbeddedTrayItem.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QImage>
#include <QPalette>

#include "Tests/Contracts/Tray/EmbeddedStage.h"
#include "Velmora/Platform/LinuxX11/Tray/TrayIconWindow.h"

namespace velmora {
namespace {

using testing::EmbeddedStage;
using testing::TestTray;
using testing::waitUntil;

class EmbeddedTrayItemTest : public ::testing::Test, public StatusItemDelegate {
  protected:
    ~EmbeddedTrayItemTest() override { stage.item().hide(); }

    std::vector<MenuItem> menuNeedsUpdate() override {
        return {MenuItem::command("first", [this] { done = "first"; }), MenuItem::note("note"),
                MenuItem::command("second", [this] { done = "second"; })};
    }
    void menuWillOpen() override { isOpen = true; }
    void menuDidClose() override { isOpen = false; }

    void start() {
        stage.startTray();
        // Red on the left, nothing on the right.
        const std::vector<std::uint32_t> halves{0xFFFF0000U, 0, 0xFFFF0000U, 0};
        stage.item().show({.toolTip = "Velmora",
                           .accessibilityLabel = "Velmora",
                           .icon = {{.width = 2, .height = 2, .pixels = halves}}},
                          *this);
        ASSERT_TRUE(waitUntil([this] { return stage.isInTray(); }));
    }
    bool comesToBeOpen(bool open) {
        return waitUntil([this, open] { return isOpen == open && (!open || stage.menu()); });
    }
    bool comesToShow(int x, std::uint32_t colour) {
        return waitUntil([&] {
            return stage.tray().pixel(TestTray::left + x, stage.options.top + 15) == colour;
        });
    }

    EmbeddedStage stage;
    std::string done;
    bool isOpen = false;
};

TEST_F(EmbeddedTrayItemTest, TheIconIsPaintedOverThePanel) {
    start();
    EXPECT_TRUE(comesToShow(3, 0xFF0000));
    EXPECT_TRUE(comesToShow(26, 0x204060));
}

TEST_F(EmbeddedTrayItemTest, InATranslucentPanelTheIconHasAnAlphaChannelOfItsOwn) {
    stage.options.translucent = true;
    start();
    EXPECT_TRUE(comesToShow(3, 0xFF0000));
    EXPECT_TRUE(comesToShow(26, 0x000000));  // What no compositor blends.
}

TEST_F(EmbeddedTrayItemTest, PanelsCanNameTheIcon) {
    start();
    EXPECT_EQ(stage.tray().iconText("_NET_WM_NAME"), "Velmora");
    EXPECT_EQ(stage.tray().iconText("WM_NAME"), "Velmora");
}

TEST_F(EmbeddedTrayItemTest, EveryButtonOpensTheMenuAndTheWheelDoesNot) {
    start();
    for (const int button : {1, 3, 2}) {
        stage.clickIcon(button == 1 ? 4
                                    : 5);  // Had it opened the menu, the next press would close it.
        stage.clickIcon(button);
        EXPECT_TRUE(comesToBeOpen(true)) << button;
        stage.closeMenu();
        EXPECT_TRUE(comesToBeOpen(false));
    }
}

TEST_F(EmbeddedTrayItemTest, TheKeyboardWalksTheMenu) {
    start();
    stage.openMenu();
    ASSERT_TRUE(comesToBeOpen(true));
    stage.type(EmbeddedStage::downKey);
    stage.type(EmbeddedStage::downKey);
    ASSERT_TRUE(waitUntil([&] {
        const QAction* const active = stage.menu()->activeAction();
        return active != nullptr && active->text() == QStringLiteral("second");
    }));
    stage.type(EmbeddedStage::returnKey);
    EXPECT_TRUE(waitUntil([this] { return done == "second"; }));
    EXPECT_FALSE(isOpen);
}

TEST_F(EmbeddedTrayItemTest, APressOutsideClosesTheMenuByItself) {
    start();
    stage.openMenu();
    ASSERT_TRUE(comesToBeOpen(true));
    stage.click({700, 600});
    EXPECT_TRUE(comesToBeOpen(false));
    EXPECT_EQ(done, "");
}

TEST_F(EmbeddedTrayItemTest, APressOnTheMenuIsNoPressSomewhere) {
    start();
    stage.openMenu();
    ASSERT_TRUE(comesToBeOpen(true));
    const QPoint inside = stage.menu()->geometry().center();
    stage.server().movePointer(inside.x(), inside.y());
    ASSERT_TRUE(waitUntil([&] { return QCursor::pos() == inside; }));
    stage.item().mousePressedSomewhere();
    EXPECT_TRUE(isOpen);
}

TEST_F(EmbeddedTrayItemTest, APressOnTheIconClosesTheMenuThatItOpened) {
    start();
    stage.openMenu();
    ASSERT_TRUE(comesToBeOpen(true));
    stage.clickIcon(1);
    EXPECT_TRUE(comesToBeOpen(false));
    stage.clickIcon(1);
    EXPECT_TRUE(comesToBeOpen(true));
}

TEST_F(EmbeddedTrayItemTest, TheMenuIsBesideTheIconAndOnTheScreen) {
    for (const int top : {0, 670}) {
        stage.options.top = top;
        start();
        stage.openMenu();
        ASSERT_TRUE(comesToBeOpen(true));
        const QRect menu = stage.menu()->geometry();
        EXPECT_EQ(menu.left(), TestTray::left);
        EXPECT_TRUE(QRect(0, 0, 1000, 700).contains(menu));
        EXPECT_EQ(top == 0 ? menu.top() : menu.bottom(), top == 0 ? TestTray::side : top - 1);
        stage.closeMenu();
        ASSERT_TRUE(comesToBeOpen(false));
        stage.item().hide();
        stage.loseTray();
    }
}

TEST_F(EmbeddedTrayItemTest, TheMenuIsLightOrDarkAsTheDesktopIs) {
    start();
    const auto lightness = [this](std::optional<DesktopAppearance::ColorScheme> scheme) {
        stage.appearance.scheme = scheme;
        stage.openMenu();
        EXPECT_TRUE(comesToBeOpen(true));
        const QPalette palette = stage.menu()->palette();
        stage.closeMenu();
        EXPECT_TRUE(comesToBeOpen(false));
        return std::pair(palette.color(QPalette::Window).lightness(),
                         palette.color(QPalette::WindowText).lightness());
    };
    const auto light = lightness(DesktopAppearance::ColorScheme::light);
    const auto dark = lightness(DesktopAppearance::ColorScheme::dark);
    EXPECT_GT(light.first, light.second);
    EXPECT_LT(dark.first, dark.second);
    EXPECT_EQ(lightness(std::nullopt), light);
}

TEST_F(EmbeddedTrayItemTest, UnderARestingPointerTheToolTipIsBesideTheIcon) {
    for (const int top : {0, 670}) {
        stage.options.top = top;
        start();
        stage.pointAtIcon();
        ASSERT_TRUE(waitUntil([&] { return stage.toolTip() != nullptr; }));
        EXPECT_EQ(stage.toolTip()->text(), QStringLiteral("Velmora"));
        const QRect tip = stage.toolTip()->geometry();
        EXPECT_EQ(tip.left(), TestTray::left);
        EXPECT_EQ(top == 0 ? tip.top() : tip.bottom(), top == 0 ? TestTray::side : top - 1);
        EXPECT_EQ(QApplication::activeWindow(), nullptr);
        stage.park();
        EXPECT_TRUE(waitUntil([&] { return stage.toolTip() == nullptr; }));
        stage.item().hide();
        stage.loseTray();
    }
}

TEST_F(EmbeddedTrayItemTest, APressShowsTheMenuInPlaceOfTheToolTip) {
    start();
    stage.pointAtIcon();
    ASSERT_TRUE(waitUntil([&] { return stage.toolTip() != nullptr; }));
    stage.clickIcon(1);
    EXPECT_TRUE(comesToBeOpen(true));
    EXPECT_EQ(stage.toolTip(), nullptr);
    stage.closeMenu();
    EXPECT_TRUE(comesToBeOpen(false));
}

TEST_F(EmbeddedTrayItemTest, TheToolTipGoesWithTheTray) {
    start();
    stage.pointAtIcon();
    ASSERT_TRUE(waitUntil([&] { return stage.toolTip() != nullptr; }));
    stage.loseTray();
    EXPECT_TRUE(waitUntil([&] { return stage.toolTip() == nullptr; }));
}

TEST_F(EmbeddedTrayItemTest, TheToolTipIsLightOrDarkAsTheDesktopIs) {
    start();
    const auto lightness = [this](std::optional<DesktopAppearance::ColorScheme> scheme) {
        stage.appearance.scheme = scheme;
        stage.pointAtIcon();
        if (!waitUntil([&] { return stage.toolTip() != nullptr; })) {
            return std::pair(0, 0);
        }
        const QImage picture = stage.toolTip()->grab().toImage();
        const int ground = picture.pixelColor(picture.width() / 2, 3).lightness();
        const int text = stage.toolTip()->palette().color(QPalette::WindowText).lightness();
        stage.park();
        EXPECT_TRUE(waitUntil([&] { return stage.toolTip() == nullptr; }));
        return std::pair(ground, text);
    };
    const auto light = lightness(DesktopAppearance::ColorScheme::light);
    const auto dark = lightness(DesktopAppearance::ColorScheme::dark);
    EXPECT_GT(light.first, light.second);
    EXPECT_LT(dark.first, dark.second);
}

TEST_F(EmbeddedTrayItemTest, AnotherTrayThatTakesOverGetsTheIcon) {
    start();
    TestTray second(stage.server().display(), {.top = 400});
    EXPECT_TRUE(waitUntil([&] { return second.icon() != XCB_WINDOW_NONE; }));
    EXPECT_FALSE(stage.isInTray());
}

TEST_F(EmbeddedTrayItemTest, WithoutAServerNothingHappens) {
    EmbeddedTrayItem item(stage.appearance, ":9999");
    item.show({}, *this);
    item.mousePressedSomewhere();
    item.menuChanged();
    item.hide();
    EXPECT_FALSE(TrayIconWindow::isTrayThere(":9999"));
}

TEST_F(EmbeddedTrayItemTest, WhetherThereIsATrayIsKnown) {
    EXPECT_FALSE(TrayIconWindow::isTrayThere(stage.server().display()));
    stage.startTray();
    EXPECT_TRUE(TrayIconWindow::isTrayThere(stage.server().display()));
}

}  // namespace
}  // namespace velmora
