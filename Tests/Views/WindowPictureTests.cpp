// SPDX-License-Identifier: MIT
#include <QGuiApplication>
#include <QTest>

#include "Tests/Views/WindowTest.h"

namespace velmora::test {

namespace {

class WindowPictureTest : public WindowTest {
  protected:
    QQuickItem& openOnboarding(int step, const char* title = "Continue in Menu Bar") {
        onboarding.open(
            true, title, [] {}, [] {});
        QQuickItem& view = onboarding.window()->view();
        view.setProperty("previousStep", step);
        view.setProperty("step", step);
        return view;
    }
};

TEST_F(WindowPictureTest, Settings) {
    world.permissions.accessibility = false;
    world.permissions.screenCapture = false;
    settings.showSettings();
    compare(*settings.window(), "settings");
}

TEST_F(WindowPictureTest, SettingsWithEverythingChanged) {
    world.model->setHoverLookupEnabled(true);
    world.model->setDwellDelay(0.8);
    world.model->setPopoverFontScale(0.7);
    world.model->setPreferredScript(ChineseScript::traditional);
    settings.showSettings();
    press(*settings.window(), Qt::Key_Tab);
    compare(*settings.window(), "settings-changed");
}

TEST_F(WindowPictureTest, OnboardingWelcome) {
    openOnboarding(0);
    compare(*onboarding.window(), "onboarding-welcome");
}

TEST_F(WindowPictureTest, OnboardingLookup) {
    // At the beginning of the recording.
    named(openOnboarding(1), QStringLiteral("demo")).setProperty("playing", false);
    compare(*onboarding.window(), "onboarding-lookup");
}

TEST_F(WindowPictureTest, OnboardingPermissions) {
    world.permissions.screenCapture = false;
    world.model->refreshPermissions();
    openOnboarding(2);
    compare(*onboarding.window(), "onboarding-permissions");
}

TEST_F(WindowPictureTest, OnboardingDone) {
    world.model->setHoverLookupEnabled(true);
    QQuickItem& view = openOnboarding(2, "Done");
    // The keyboard on the switch.
    named(view, QStringLiteral("hoverSwitch")).forceActiveFocus(Qt::TabFocusReason);
    compare(*onboarding.window(), "onboarding-done");
}

TEST_F(WindowPictureTest, OnboardingWithoutCompositor) {
    compositor.set(false);
    openOnboarding(0);
    compare(*onboarding.window(), "onboarding-opaque");
}

TEST_F(WindowPictureTest, SettingsOnALowScreen) {
    const double ratio = qGuiApp->devicePixelRatio();
    screens.set({{1, {0, 0, 800 * ratio, 480 * ratio}, ratio, {0, 0, 800 * ratio, 480 * ratio}}});
    settings.showSettings();
    press(*settings.window(), Qt::Key_Tab, Qt::ShiftModifier);
    compare(*settings.window(), "settings-low");
}

TEST_F(WindowPictureTest, LaunchFlashWithoutCompositor) {
    compositor.set(false);
    flash.flash();
    compare(const_cast<PanelWindow&>(*flash.panel()), "launch-flash-opaque");
}

TEST_F(WindowPictureTest, LaunchFlash) {
    flash.flash();
    world.clock.advance(1);
    compare(const_cast<PanelWindow&>(*flash.panel()), "launch-flash");
}

TEST_F(WindowPictureTest, UpdateOffered) {
    UpdateWindowState state;
    state.phase = UpdateWindowState::Phase::available;
    state.version = "1.4";
    state.currentVersion = "1.3.2";
    state.releaseNotes =
        "• Words in terminals are found by column, wide characters included.\n"
        "• Recognition of small grey text is more careful about look-alike characters.\n"
        "• The popover keeps clear of panels on a second screen.\n\n"
        "Thank you for every report of a word that was read wrong. Reports with a recording "
        "attached are the quickest to mend.";
    updates.show(state);
    compare(*updates.window(), "update-available");
    state.phase = UpdateWindowState::Phase::downloading;
    state.progress = 0.4;
    updates.update(state);
    compare(*updates.window(), "update-downloading");
}

TEST_F(WindowPictureTest, UpdateChecking) {
    UpdateWindowState state;
    state.phase = UpdateWindowState::Phase::checking;
    state.currentVersion = "1.3.2";
    updates.show(state);
    compare(*updates.window(), "update-checking");
}

TEST_F(WindowPictureTest, UpdateWithoutNotes) {
    UpdateWindowState state;
    state.phase = UpdateWindowState::Phase::available;
    state.version = "1.4";
    state.currentVersion = "1.3.2";
    state.message = "The download broke off. Velmora 1.3.2 stays as it is.";
    updates.show(state);
    compare(*updates.window(), "update-without-notes");
}

TEST_F(WindowPictureTest, UpdateMessage) {
    UpdateWindowState state;
    state.message = "Velmora 1.3.2 is the newest version.";
    state.currentVersion = "1.3.2";
    updates.show(state);
    compare(*updates.window(), "update-message");
}

}  // namespace

}  // namespace velmora::test
