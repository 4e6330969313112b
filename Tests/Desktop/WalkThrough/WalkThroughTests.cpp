// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "Tests/Desktop/Support/Clipboard.h"
#include "Tests/Desktop/WalkThrough/WalkThrough.h"

namespace velmora::test {
namespace {

using testing::TrayHost;

constexpr const char* onboardingTitle = "Velmora Onboarding";
constexpr const char* settingsTitle = "Velmora Settings";

// Where the controls are in the onboarding window.
constexpr Point continueButton{630, 637};
constexpr Point completionButton{585, 637};
constexpr Point requestAccessibility{508, 313};
constexpr Point hoverSwitch{65, 480};

// And in the settings window.
constexpr Point toneColorsSwitch{468, 237};
constexpr Point fontSizeEnd{424, 326};

// The tone of 学 and 习, and the headword without its tones, on the light card.
constexpr std::uint32_t secondTone = 0xc26200;

/// The word of the sample text that is looked up, its line and a character of it.
constexpr std::size_t line = 0;
constexpr std::size_t character = 10;
const std::string word = "学习";

bool isDictionary(const Rect& frame) {
    return frame.height >= 180 && frame.width >= 300;
}

std::vector<std::string> recents(WalkThrough& walk) {
    const BusMenuNode menu = walk.openMenu();
    const BusMenuNode* const recent = TrayHost::find(menu, QStringLiteral("Recent"));
    return recent == nullptr ? std::vector<std::string>() : TrayHost::labels(*recent);
}

void expectSpoken(WalkThrough& walk, const std::string& text) {
    const auto spoken = walk.speech().nextSpoken(std::chrono::seconds(60));
    ASSERT_TRUE(spoken) << "nothing was said; the program wrote: " << walk.velmora().log();
    EXPECT_EQ(spoken->text, text);
    EXPECT_EQ(spoken->voice, "pinyin-aware");
}

/// A word of a real program: bubble, dictionary, spoken, found among the recent ones, spoken again.
void lookUpAWord(WalkThrough& walk) {
    walk.openReader();
    const nlohmann::json record = walk.hover(line, character);
    ASSERT_TRUE(record.is_object()) << walk.diagnostics();
    EXPECT_EQ(record.at("match").at("matchedWord"), word);
    walk.popover();
    walk.keepPicture("bubble");
    walk.desktop().pressKey("Shift_L");
    const Rect card = walk.popover(isDictionary);
    walk.desktop().releaseKey("Shift_L");
    walk.keepPicture("dictionary");
    EXPECT_GT(walk.pixelsOf(card, secondTone), 100U);

    // The loudspeaker beside the headword.
    walk.desktop().click(static_cast<int>(card.maxX()) - 83, static_cast<int>(card.minY()) + 41);
    expectSpoken(walk, word);
    walk.leave();

    const std::vector<std::string> list = recents(walk);
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list.front(), "学习  xué xí");
    walk.choose(list.front());
    expectSpoken(walk, word);
}

/// What was set holds for the next lookup without anything being started anew.
void expectPlainAndLarger(WalkThrough& walk, const Rect& before) {
    ASSERT_TRUE(walk.hover(line, character).is_object());
    EXPECT_GT(walk.popover().height, before.height);
    walk.desktop().pressKey("Shift_L");
    const Rect card = walk.popover(isDictionary);
    walk.desktop().releaseKey("Shift_L");
    walk.keepPicture("dictionary-as-set");
    EXPECT_EQ(walk.pixelsOf(card, secondTone), 0U);
    walk.leave();
}

Rect bubbleFrame(WalkThrough& walk) {
    EXPECT_TRUE(walk.hover(line, character).is_object());
    const Rect frame = walk.popover();
    walk.leave();
    return frame;
}

TEST(WalkThrough, byMouse) {
    WalkThrough walk("mouse");
    const auto onboarding = walk.window(onboardingTitle);
    EXPECT_EQ(onboarding.client.width, 720);
    EXPECT_EQ(onboarding.client.height, 680);
    walk.keepPicture("welcome");
    walk.clickIn(onboarding, continueButton);
    walk.keepPicture("lookup");
    walk.clickIn(onboarding, continueButton);
    EXPECT_NE(walk.diagnostics().find("Accessibility granted: false"), std::string::npos);
    walk.keepPicture("permissions");
    walk.clickIn(onboarding, requestAccessibility);
    EXPECT_TRUE(walk.awaitDiagnostics("Accessibility granted: true"));
    walk.clickIn(onboarding, hoverSwitch);
    EXPECT_TRUE(walk.awaitDiagnostics("Live status: Hover lookup ready"));
    EXPECT_TRUE(walk.awaitSetting("hoverLookupEnabled=true"));
    walk.keepPicture("permissions-granted");
    walk.clickIn(onboarding, completionButton);
    EXPECT_TRUE(walk.awaitNoWindow(onboardingTitle));
    EXPECT_TRUE(walk.awaitSetting("onboardingCompleted=true"));

    lookUpAWord(walk);
    const Rect before = bubbleFrame(walk);

    // What the menu copied is there for other programs after the menu is gone.
    walk.choose("Copy Lookup Diagnostics");
    EXPECT_EQ(clipboardText(walk.desktop()), walk.diagnostics());

    walk.choose("Settings");
    const auto settings = walk.window(settingsTitle);
    walk.keepPicture("settings");
    walk.clickIn(settings, toneColorsSwitch);
    walk.clickIn(settings, fontSizeEnd);
    EXPECT_TRUE(walk.awaitSetting("popoverFontScale=1.5"));
    walk.keepPicture("settings-changed");
    walk.desktop().typeKey("Escape");
    EXPECT_TRUE(walk.awaitNoWindow(settingsTitle));
    expectPlainAndLarger(walk, before);

    walk.choose("Quit Velmora");
    EXPECT_EQ(walk.velmora().process().waitForExit(VirtualDesktop::patience), 0);
    EXPECT_TRUE(walk.velmora().windows().empty());
}

TEST(WalkThrough, byKeyboard) {
    WalkThrough walk("keyboard");
    const auto onboarding = walk.window(onboardingTitle);
    walk.typeIn(onboarding, "Return");
    walk.typeIn(onboarding, "Return");
    walk.typeIn(onboarding, "Tab");
    walk.keepPicture("request");
    walk.typeIn(onboarding, "space");
    EXPECT_TRUE(walk.awaitDiagnostics("Accessibility granted: true"));
    for (int i = 0; i < 4; ++i) {
        walk.typeIn(onboarding, "Tab");
    }
    walk.typeIn(onboarding, "space");
    EXPECT_TRUE(walk.awaitDiagnostics("Live status: Hover lookup ready"));
    walk.keepPicture("hover-switch");
    for (int i = 0; i < 3; ++i) {
        walk.typeIn(onboarding, "Tab");
    }
    walk.keepPicture("completion");
    walk.typeIn(onboarding, "Return");
    EXPECT_TRUE(walk.awaitNoWindow(onboardingTitle));
    EXPECT_TRUE(walk.awaitSetting("onboardingCompleted=true"));

    walk.keepPictures(false);  // They would be the same as by mouse.
    lookUpAWord(walk);
    const Rect before = bubbleFrame(walk);
    walk.keepPictures(true);

    EXPECT_EQ(walk.velmora().command({"settings"}).status, 0);
    const auto settings = walk.window(settingsTitle);
    for (int i = 0; i < 4; ++i) {
        walk.typeIn(settings, "Tab");
    }
    walk.typeIn(settings, "space");
    walk.typeIn(settings, "Tab");
    walk.typeIn(settings, "Tab");
    walk.typeIn(settings, "End");
    EXPECT_TRUE(walk.awaitSetting("popoverFontScale=1.5"));
    walk.keepPicture("settings");
    walk.desktop().typeKey("Escape");
    EXPECT_TRUE(walk.awaitNoWindow(settingsTitle));
    walk.keepPictures(false);
    expectPlainAndLarger(walk, before);

    EXPECT_EQ(walk.velmora().command({"quit"}).status, 0);
    EXPECT_EQ(walk.velmora().process().waitForExit(VirtualDesktop::patience), 0);
}

}  // namespace
}  // namespace velmora::test
