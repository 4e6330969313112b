// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>

#include "Tests/Desktop/Windows/WindowDesktop.h"
#include "Tests/Views/FakeAppearance.h"
#include "Velmora/Platform/LinuxX11/X11ApplicationShell.h"
#include "Velmora/Platform/LinuxX11/X11Compositor.h"
#include "Velmora/Platform/LinuxX11/X11Screens.h"
#include "Velmora/Presentation/UpdateWindowController.h"

namespace velmora::test {

namespace {

using Phase = UpdateWindowState::Phase;

class UpdateWindowOnDisplayTest : public testing::Test {
  protected:
    UpdateWindowOnDisplayTest() {
        updates.setActions([this] { ++installs; }, [this] { ++laters; });
    }

    static UpdateWindowState offer() {
        UpdateWindowState state;
        state.phase = Phase::available;
        state.version = "2.0";
        state.currentVersion = "1.0";
        state.releaseNotes = "Faster.\nSmaller.\nFriendlier.";
        return state;
    }

    /// Waits until the window stands on the screen with the focus.
    bool awaitWindow() {
        return WindowDesktop::until([this] {
            return updates.window() != nullptr && updates.window()->isExposed() &&
                   WindowDesktop::get().focusedWindow() == updates.window()->winId();
        });
    }
    bool isMapped() const {
        const auto windows = WindowDesktop::get().windows();
        return std::any_of(windows.begin(), windows.end(),
                           [](const auto& window) { return window.title == "Velmora Update"; });
    }
    /// A key, until it had this effect: the window manager passes keys on when it is ready.
    bool typed(const char* key, const int& count, int expected) {
        WindowDesktop::get().typeKey(key);
        return WindowDesktop::until([&] { return count == expected; });
    }
    static QQuickItem* named(const QQuickItem& root, const QString& name) {
        for (QQuickItem* const child : root.childItems()) {
            QQuickItem* const found = child->objectName() == name ? child : named(*child, name);
            if (found != nullptr) {
                return found;
            }
        }
        return nullptr;
    }
    QQuickItem* part(const char* name) const {
        return named(updates.window()->view(), QString::fromLatin1(name));
    }
    void clickOn(const char* name) {
        QQuickItem* const item = part(name);
        ASSERT_NE(item, nullptr);
        const QPoint middle =
            item->mapToGlobal(QPointF(item->width() / 2, item->height() / 2)).toPoint();
        WindowDesktop::get().click(middle.x(), middle.y());
    }

    FakeAppearance appearance;
    X11Compositor compositor;
    X11Screens screens;
    X11ApplicationShell shell;
    Theme theme{appearance, compositor};
    ViewEngine views{theme};
    UpdateWindowController updates{views, screens, shell};
    int installs = 0;
    int laters = 0;
};

TEST_F(UpdateWindowOnDisplayTest, TakesTheFocusAndObeysTheKeyboard) {
    updates.show(offer());
    ASSERT_TRUE(awaitWindow());
    WindowDesktop::keepPicture("update-available");
    EXPECT_TRUE(typed("Return", installs, 1));
    EXPECT_TRUE(typed("Escape", laters, 1));
    EXPECT_TRUE(WindowDesktop::until([this] { return !isMapped(); }));
}

TEST_F(UpdateWindowOnDisplayTest, ObeysTheMouseThroughADownload) {
    updates.show(offer());
    ASSERT_TRUE(awaitWindow());
    clickOn("install");
    EXPECT_TRUE(WindowDesktop::until([this] { return installs == 1; }));
    UpdateWindowState state = offer();
    state.phase = Phase::downloading;
    for (const double progress : {0.0, 0.25, 0.5, 1.0}) {
        state.progress = progress;
        updates.update(state);
        const QQuickItem* const bar = part("progressBar");
        ASSERT_NE(bar, nullptr);
        const QPoint corner = bar->mapToGlobal(QPointF(0, 0)).toPoint();
        const int end = static_cast<int>(bar->width() * progress);
        const int y = corner.y() + 3;
        EXPECT_TRUE(WindowDesktop::until([&] {
            return (end < 8 || WindowDesktop::pixel(corner.x() + end - 6, y) == theme.tint()) &&
                   (progress == 1 ||
                    WindowDesktop::pixel(corner.x() + end + 6, y) == theme.control());
        })) << progress;
    }
    WindowDesktop::keepPicture("update-downloading");
    clickOn("later");
    EXPECT_TRUE(WindowDesktop::until([this] { return laters == 1 && !isMapped(); }));
}

TEST_F(UpdateWindowOnDisplayTest, IsClosedByTheWindowManager) {
    updates.show(offer());
    ASSERT_TRUE(awaitWindow());
    WindowDesktop::get().pressKey("Alt_L");
    WindowDesktop::get().typeKey("F4");
    WindowDesktop::get().releaseKey("Alt_L");
    EXPECT_TRUE(WindowDesktop::until([this] { return laters == 1 && !isMapped(); }));
    EXPECT_EQ(updates.window(), nullptr);
}

TEST_F(UpdateWindowOnDisplayTest, GrowsFromAMessageToAnOffer) {
    UpdateWindowState state;
    state.phase = Phase::checking;
    updates.show(state);
    ASSERT_TRUE(awaitWindow());
    WindowDesktop::keepPicture("update-checking");
    const int small = updates.window()->height();
    updates.show(offer());
    EXPECT_TRUE(WindowDesktop::until([] {
        for (const auto& window : WindowDesktop::get().windows()) {
            if (window.title == "Velmora Update") {
                return window.client.height == 400;
            }
        }
        return false;
    }));
    EXPECT_LT(small, 200);
}

}  // namespace

}  // namespace velmora::test
