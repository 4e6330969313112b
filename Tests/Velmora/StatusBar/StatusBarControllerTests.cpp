// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/StatusBarController.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <algorithm>

#include "Tests/Velmora/Coordination/ModelWorld.h"
#include "Tests/Velmora/StatusBar/RecordedStatusItem.h"

namespace velmora {
namespace {

using ::testing::ElementsAre;
using testing::ModelWorld;
using testing::RecordedEvents;
using testing::RecordedStatusItem;

QGuiApplication& guiApplication() {
    static int count = 1;
    static char name[] = "test";
    static char* arguments[] = {name, nullptr};
    static QGuiApplication application(count, arguments);
    return application;
}

class CountedUpdates final : public SoftwareUpdating {
  public:
    std::optional<std::string> availableUpdateVersion() const override { return version; }
    void observeAvailableUpdateVersion(Observer newObserver) override {
        observer = std::move(newObserver);
        observer(version);
    }
    void checkForUpdates() override { ++checks; }

    std::optional<std::string> version;
    Observer observer;
    int checks = 0;
};

class CountedSettings final : public SettingsPresenting {
  public:
    void showSettings() override { ++shown; }
    int shown = 0;
};

class StatusBarControllerTest : public ::testing::Test {
  protected:
    StatusBarControllerTest() { guiApplication(); }

    void start() {
        world.settings.setBoolean("onboardingCompleted", true);
        world.startWith(controller, updates, world.analytics);
        world.journal.clear();
    }
    void startHovering() {
        world.settings.setBoolean("hoverLookupEnabled", true);
        start();
    }
    void lookUp(const std::string& text, Point point) {
        world.restAt(point);
        world.answerLast(ModelWorld::hovered(text, 0));
    }
    void choose(const std::string& title) {
        const MenuItem* const found = item.find(title);
        ASSERT_NE(found, nullptr) << title;
        ASSERT_TRUE(found->action) << title;
        found->action();
    }

    ModelWorld world;
    CountedUpdates updates;
    CountedSettings settingsWindow;
    RecordedStatusItem item;
    StatusBarController controller{{.item = item,
                                    .settings = settingsWindow,
                                    .shell = world.shell,
                                    .events = world.events,
                                    .clock = world.clock}};
};

TEST_F(StatusBarControllerTest, TheItemIsNamedAndHasItsIcon) {
    start();
    ASSERT_TRUE(item.look);
    EXPECT_EQ(item.look->toolTip, "Velmora");
    EXPECT_EQ(item.look->accessibilityLabel, "Velmora");
    EXPECT_FALSE(item.look->icon.empty());
}

TEST_F(StatusBarControllerTest, TheIconIsAWhiteCharacterOnNothingInSeveralSizes) {
    const auto icon = StatusBarController::makeStatusIcon();
    std::vector<int> widths;
    for (const StatusIconPixmap& pixmap : icon) {
        widths.push_back(pixmap.width);
        EXPECT_EQ(pixmap.width, pixmap.height);
        ASSERT_EQ(pixmap.pixels.size(), static_cast<std::size_t>(pixmap.width * pixmap.height));
        std::size_t inked = 0;
        for (const std::uint32_t pixel : pixmap.pixels) {
            if ((pixel >> 24U) > 0x80U) {
                ++inked;
                EXPECT_GT(pixel & 0xFFU, 0xF0U);
                EXPECT_GT((pixel >> 8U) & 0xFFU, 0xF0U);
                EXPECT_GT((pixel >> 16U) & 0xFFU, 0xF0U);
            }
        }
        EXPECT_GT(inked, pixmap.pixels.size() / 10);
        EXPECT_LT(inked, pixmap.pixels.size() / 2);
    }
    EXPECT_THAT(widths, ::testing::Contains(18));
    EXPECT_THAT(widths, ::testing::Contains(36));
}

TEST_F(StatusBarControllerTest, TheCharacterIsAsLargeAsItsFontAndInTheMiddle) {
    for (const StatusIconPixmap& pixmap : StatusBarController::makeStatusIcon()) {
        const double scale = pixmap.width / 18.0;
        int left = pixmap.width;
        int right = 0;
        int top = pixmap.height;
        int bottom = 0;
        for (int y = 0; y < pixmap.height; ++y) {
            for (int x = 0; x < pixmap.width; ++x) {
                const auto place = static_cast<std::size_t>(y * pixmap.width + x);
                if ((pixmap.pixels[place] >> 24U) > 0x60U) {
                    left = std::min(left, x);
                    right = std::max(right, x + 1);
                    top = std::min(top, y);
                    bottom = std::max(bottom, y + 1);
                }
            }
        }
        // The ink of a character of 16 points is a little smaller than the character.
        EXPECT_NEAR(right - left, 15 * scale, 1.5 * scale) << pixmap.width;
        EXPECT_NEAR(bottom - top, 15 * scale, 1.5 * scale) << pixmap.width;
        EXPECT_NEAR((left + right) / 2.0, 9 * scale, 1.2 * scale) << pixmap.width;
        EXPECT_NEAR((top + bottom) / 2.0, 9 * scale, 1.2 * scale) << pixmap.width;
    }
}

TEST_F(StatusBarControllerTest, TheIconStaysAsItIsWhetherHoveringIsOnOrOff) {
    startHovering();
    ASSERT_EQ(item.shows, 1);
    world.model->setHoverLookupEnabled(false);
    world.model->setHoverLookupEnabled(true);
    EXPECT_EQ(item.shows, 1);
}

TEST_F(StatusBarControllerTest, AFreshMenuHasItsEntriesInOrder) {
    start();
    item.open();
    EXPECT_THAT(item.titles(),
                ElementsAre("Hover lookup", "Live: Hover lookup off",
                            "Last hover: No hover attempts yet", "-", "Copy Lookup Diagnostics",
                            "-", "Accessibility granted", "Screen Recording granted", "-",
                            "Onboarding", "Settings", "Check for Updates...", "Quit Velmora"));
}

TEST_F(StatusBarControllerTest, AFullMenuHasFifteenEntries) {
    startHovering();
    updates.observer("1.2.0");
    lookUp("知道", {500, 500});
    item.open();
    EXPECT_THAT(item.titles(),
                ElementsAre("Hover lookup", "Live: Hover lookup ready",
                            "Last hover: Showing pinyin for 知道", "-", "Copy Lookup Diagnostics",
                            "Recent", "-", "Accessibility granted", "Screen Recording granted", "-",
                            "Onboarding", "Settings", "Update Available: 1.2.0...",
                            "Check for Updates...", "Quit Velmora"));
}

TEST_F(StatusBarControllerTest, LinesThatOnlyTellAreDisabled) {
    start();
    item.open();
    for (const MenuItem& entry : item.menu) {
        const bool tells = entry.title.starts_with("Live: ") ||
                           entry.title.starts_with("Last hover: ") ||
                           entry.title.starts_with("Accessibility ") ||
                           entry.title.starts_with("Screen Recording ");
        EXPECT_EQ(entry.enabled, !tells) << entry.title;
        EXPECT_EQ(entry.action == nullptr, tells || entry.kind == MenuItem::Kind::separator);
    }
}

TEST_F(StatusBarControllerTest, HoverLookupIsMarkedWhileItIsOnAndToggles) {
    start();
    item.open();
    EXPECT_TRUE(item.find("Hover lookup")->checkable);
    EXPECT_FALSE(item.find("Hover lookup")->checked);
    choose("Hover lookup");
    EXPECT_TRUE(world.model->hoverLookupEnabled());
    EXPECT_EQ(world.settings.boolean("hoverLookupEnabled"), true);
    item.open();
    EXPECT_TRUE(item.find("Hover lookup")->checked);
    choose("Hover lookup");
    EXPECT_FALSE(world.model->hoverLookupEnabled());
}

TEST_F(StatusBarControllerTest, RecentIsThereOnlyAfterALookupTheNewestFirst) {
    startHovering();
    item.open();
    EXPECT_EQ(item.find("Recent"), nullptr);
    item.delegate->menuDidClose();

    lookUp("知道", {500, 500});
    item.open();
    ASSERT_NE(item.find("Recent"), nullptr);
    EXPECT_EQ(item.find("Recent")->children.size(), 1U);
    EXPECT_FALSE(item.find("Recent")->action);
    item.delegate->menuDidClose();

    lookUp("中国", {900, 500});
    item.open();
    const auto& recent = item.find("Recent")->children;
    ASSERT_EQ(recent.size(), 2U);
    EXPECT_EQ(recent[0].title, "中国  Zhōng guó");
    EXPECT_EQ(recent[1].title, "知道  zhī dào");
}

TEST_F(StatusBarControllerTest, ARecentLookupIsSpoken) {
    startHovering();
    lookUp("知道", {500, 500});
    item.open();
    item.find("Recent")->children.front().action();
    EXPECT_THAT(world.speech.spoken, ElementsAre("知道"));
}

TEST_F(StatusBarControllerTest, OpeningReadsTheGrantsAgain) {
    world.permissions.accessibility = false;
    world.permissions.screenCapture = false;
    startHovering();
    item.open();
    EXPECT_NE(item.find("Accessibility needed"), nullptr);
    EXPECT_NE(item.find("Screen Recording needed for OCR"), nullptr);
    EXPECT_NE(item.find("Live: Accessibility permission needed"), nullptr);
    item.delegate->menuDidClose();

    world.permissions.accessibility = true;
    world.permissions.screenCapture = true;
    item.open();
    EXPECT_NE(item.find("Accessibility granted"), nullptr);
    EXPECT_NE(item.find("Screen Recording granted"), nullptr);
    EXPECT_NE(item.find("Live: Hover lookup ready"), nullptr);
}

TEST_F(StatusBarControllerTest, TheUpdateEntryComesAndGoesWithTheUpdate) {
    start();
    updates.observer("1.2.0");
    item.open();
    choose("Update Available: 1.2.0...");
    EXPECT_EQ(updates.checks, 1);
    choose("Check for Updates...");
    EXPECT_EQ(updates.checks, 2);
    updates.observer(std::nullopt);
    item.open();
    EXPECT_EQ(item.find("Update Available: 1.2.0..."), nullptr);
}

TEST_F(StatusBarControllerTest, TheCommandsReachTheirParts) {
    start();
    item.open();
    choose("Copy Lookup Diagnostics");
    EXPECT_EQ(world.pasteboard.text, world.model->lookupDiagnostics());
    choose("Settings");
    EXPECT_EQ(settingsWindow.shown, 1);
    choose("Onboarding");
    EXPECT_THAT(world.journal, ::testing::Contains("onboarding again Done"));
    choose("Quit Velmora");
    EXPECT_EQ(world.journal.back(), "terminate");
}

TEST_F(StatusBarControllerTest, NothingIsLookedUpWhileTheMenuIsOpen) {
    startHovering();
    item.open();
    EXPECT_TRUE(world.model->statusMenuOpen());
    world.restAt({500, 500});
    EXPECT_TRUE(world.extractor.asked.empty());
    item.delegate->menuDidClose();
    EXPECT_FALSE(world.model->statusMenuOpen());
    world.restAt({600, 500});
    EXPECT_EQ(world.extractor.asked.size(), 1U);
}

TEST_F(StatusBarControllerTest, ReadingTheEntriesDoesNotBlockLookups) {
    startHovering();
    item.delegate->menuNeedsUpdate();
    EXPECT_FALSE(world.model->statusMenuOpen());
}

TEST_F(StatusBarControllerTest, APressAnywhereIsToldWhileTheMenuIsOpenOnly) {
    start();
    const auto press = [this](RecordedEvents::Kind kind) {
        world.events.send(kind, EventMask::anyMouseDown);
    };
    press(RecordedEvents::Kind::global);
    EXPECT_EQ(item.presses, 0);

    item.open();
    press(RecordedEvents::Kind::global);  // The one that opened it.
    EXPECT_EQ(item.presses, 0);
    world.clock.advance(1);
    press(RecordedEvents::Kind::global);
    EXPECT_EQ(item.presses, 1);
    EXPECT_FALSE(world.model->statusMenuOpen());
    press(RecordedEvents::Kind::global);
    EXPECT_EQ(item.presses, 1);

    item.open();
    world.clock.advance(1);
    press(RecordedEvents::Kind::local);
    EXPECT_EQ(item.presses, 2);
}

TEST_F(StatusBarControllerTest, WithoutItsModelTheMenuIsEmptyAndHarmless) {
    startHovering();
    item.open();
    world.model.reset();
    EXPECT_TRUE(item.delegate->menuNeedsUpdate().empty());
    item.delegate->menuWillOpen();
    item.delegate->menuDidClose();
    choose("Hover lookup");
    choose("Settings");
    choose("Check for Updates...");
    EXPECT_EQ(settingsWindow.shown, 0);
    EXPECT_EQ(updates.checks, 0);
}

TEST_F(StatusBarControllerTest, AnOpenMenuIsToldOnceOfWhatChangesTogether) {
    start();
    item.open();
    world.model->setHoverLookupEnabled(true);  // The switch and the status line.
    EXPECT_EQ(item.changes, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(item.changes, 1);
    EXPECT_TRUE(item.find("Hover lookup")->checked);
    EXPECT_NE(item.find("Live: Hover lookup ready"), nullptr);
    updates.observer("1.2.0");
    QCoreApplication::processEvents();
    EXPECT_NE(item.find("Update Available: 1.2.0..."), nullptr);
    QCoreApplication::processEvents();
    EXPECT_EQ(item.changes, 2);
}

TEST_F(StatusBarControllerTest, AClosedMenuIsToldOfNothing) {
    start();
    item.open();
    world.model->setHoverLookupEnabled(true);
    item.delegate->menuDidClose();
    updates.observer("1.2.0");
    QCoreApplication::processEvents();
    EXPECT_EQ(item.changes, 0);
}

}  // namespace
}  // namespace velmora
