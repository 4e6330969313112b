// SPDX-License-Identifier: MIT
// The model's start, its settings, grants, onboarding and diagnostics.
#include "Velmora/Coordination/AppModel.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QVariant>
#include <limits>

#include "Tests/Velmora/Coordination/ModelWorld.h"

namespace velmora {
namespace {

using testing::Journal;
using testing::ModelWorld;
using Captured = testing::RecordedAnalytics::Captured;

struct AppModelTest : ::testing::Test, ModelWorld {};

TEST_F(AppModelTest, BeginsWithItsInitialValues) {
    start();
    EXPECT_FALSE(model->hoverLookupEnabled());
    EXPECT_TRUE(model->analyticsEnabled());
    EXPECT_FALSE(model->onboardingCompleted());
    EXPECT_EQ(model->hoverStatus(), "Hover lookup off");
    EXPECT_EQ(model->lastHoverStatus(), "No hover attempts yet");
    EXPECT_EQ(model->dwellDelay(), 0.25);
    EXPECT_EQ(model->popoverFontScale(), 1.0);
    EXPECT_TRUE(model->toneColorsEnabled());
    EXPECT_FALSE(model->autoPronounce());
    EXPECT_EQ(model->preferredScript(), ChineseScript::simplified);
    EXPECT_TRUE(model->recentLookups().empty());
    EXPECT_EQ(model->updateAvailableVersion(), std::nullopt);
    EXPECT_EQ(analytics.configurations, 1);
}

TEST_F(AppModelTest, FirstLaunchShowsOnboardingAfterInitialisation) {
    start();
    EXPECT_EQ(journal, (Journal{"status bar, Hover lookup off", "regular",
                                "onboarding first Continue in Menu Bar", "activate"}));
}

TEST_F(AppModelTest, NothingIsShownBeforeInitialisationHasReturned) {
    settings.setBoolean("onboardingCompleted", true);
    queue.post([this] { journal.emplace_back("first turn"); });
    start();
    EXPECT_EQ(journal,
              (Journal{"status bar, Hover lookup off", "first turn", "accessory", "flash"}));
}

TEST_F(AppModelTest, TellsThatItWasOpened) {
    settings.setBoolean("hoverLookupEnabled", true);
    permissions.screenCapture = false;
    start();
    ASSERT_EQ(analytics.captured.size(), 1U);
    EXPECT_EQ(analytics.captured[0], (Captured{AnalyticsEvent::appOpened,
                                               {{"accessibility_granted", true},
                                                {"hover_lookup_enabled", true},
                                                {"onboarding_completed", false},
                                                {"screen_recording_granted", false}}}));
}

TEST_F(AppModelTest, StartsWatchingWhereHoveringIsOnAndGranted) {
    settings.setBoolean("hoverLookupEnabled", true);
    start();
    EXPECT_EQ(model->hoverStatus(), "Hover lookup ready");
    EXPECT_EQ(events.monitors.size(), 6U);
}

TEST_F(AppModelTest, WithoutTheGrantItDoesNotWatch) {
    settings.setBoolean("hoverLookupEnabled", true);
    permissions.accessibility = false;
    start();
    EXPECT_EQ(model->hoverStatus(), "Accessibility permission needed");
    EXPECT_EQ(model->lastHoverStatus(), "No hover attempts yet");
    EXPECT_TRUE(events.monitors.empty());
}

TEST_F(AppModelTest, FontScalesThatAreNoneLoadAsOne) {
    for (const char* text : {"0", "-1", "nan", "inf", "large", ""}) {
        settings.setText("popoverFontScale", text);
        start();
        EXPECT_EQ(model->popoverFontScale(), 1.0) << text;
        model.reset();
    }
    settings.setText("popoverFontScale", "1e9");
    start();
    EXPECT_EQ(model->popoverFontScale(), 1e9);
}

TEST_F(AppModelTest, SettingsArePersistedOnEverySet) {
    start();
    model->setHoverLookupEnabled(true);
    EXPECT_EQ(settings.boolean("hoverLookupEnabled"), true);
    model->setHoverLookupEnabled(false);
    EXPECT_EQ(settings.boolean("hoverLookupEnabled"), false);
    model->setPopoverFontScale(1.3);
    EXPECT_EQ(settings.number("popoverFontScale"), 1.3);
    // Written again even where nothing changes.
    settings.setText("popoverFontScale", "elsewhere");
    model->setPopoverFontScale(1.3);
    EXPECT_EQ(settings.number("popoverFontScale"), 1.3);
    model.reset();
    start();
    EXPECT_EQ(model->popoverFontScale(), 1.3);
}

TEST_F(AppModelTest, WhatLivesInMemoryIsNotPersisted) {
    start();
    model->setDwellDelay(0.5);
    model->setToneColorsEnabled(false);
    model->setAutoPronounce(true);
    model->setPreferredScript(ChineseScript::traditional);
    model.reset();
    start();
    EXPECT_EQ(model->dwellDelay(), 0.25);
    EXPECT_TRUE(model->toneColorsEnabled());
    EXPECT_FALSE(model->autoPronounce());
    EXPECT_EQ(model->preferredScript(), ChineseScript::simplified);
}

TEST_F(AppModelTest, EnablingTellsAndStarts) {
    start();
    analytics.captured.clear();
    QSignalSpy changed(&*model, &AppModel::hoverLookupEnabledChanged);
    model->setHoverLookupEnabled(true);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(model->hoverStatus(), "Hover lookup ready");
    EXPECT_EQ(
        analytics.captured,
        (std::vector<Captured>{{AnalyticsEvent::hoverLookupEnabledChanged, {{"enabled", true}}}}));
    model->setHoverLookupEnabled(true);
    EXPECT_EQ(analytics.captured.size(), 2U);
    EXPECT_EQ(changed.count(), 1);
    model->setHoverLookupEnabled(false);
    EXPECT_EQ(model->hoverStatus(), "Hover lookup off");
    EXPECT_TRUE(events.monitors.empty());
    EXPECT_EQ(analytics.captured[2].properties.at("enabled"), AnalyticsValue(false));
}

TEST_F(AppModelTest, EnablingReadsTheGrantsAgain) {
    permissions.accessibility = false;
    start();
    permissions.accessibility = true;
    model->setHoverLookupEnabled(true);
    EXPECT_EQ(model->hoverStatus(), "Hover lookup ready");
}

TEST_F(AppModelTest, TheDwellDelayReachesTheMonitor) {
    startHovering();
    model->setDwellDelay(0.8);
    moveTo({500, 500});
    clock.advance(0.7);
    EXPECT_TRUE(extractor.asked.empty());
    clock.advance(0.1);
    EXPECT_EQ(extractor.asked.size(), 1U);
    model->setDwellDelay(std::numeric_limits<double>::quiet_NaN());
    model->setDwellDelay(-1);
    EXPECT_EQ(model->dwellDelay(), 0.8);
    model->setPopoverFontScale(std::numeric_limits<double>::infinity());
    EXPECT_EQ(model->popoverFontScale(), 1.0);
}

TEST_F(AppModelTest, AGrantThatComesOrGoesStartsAndStops) {
    permissions.accessibility = false;
    startHovering();
    permissions.accessibility = true;
    model->refreshPermissions();
    EXPECT_EQ(model->hoverStatus(), "Hover lookup ready");
    EXPECT_EQ(events.monitors.size(), 6U);
    restAt({500, 500});
    answerLast(hovered("知道", 0));
    permissions.accessibility = false;
    model->permissions().recheck();  // As the delayed check does.
    EXPECT_EQ(model->hoverStatus(), "Accessibility permission needed");
    EXPECT_TRUE(events.monitors.empty());
    EXPECT_EQ(popover.frame, std::nullopt);
    EXPECT_EQ(highlight.shown, std::nullopt);
}

TEST_F(AppModelTest, MirrorsTheAvailableUpdate) {
    updates.version = "1.2.0";
    start();
    EXPECT_EQ(model->updateAvailableVersion(), "1.2.0");
    EXPECT_EQ(model->property("updateAvailableVersion").toString(), QStringLiteral("1.2.0"));
    QSignalSpy changed(&*model, &AppModel::updateAvailableVersionChanged);
    updates.observer(std::nullopt);
    EXPECT_EQ(model->updateAvailableVersion(), std::nullopt);
    EXPECT_EQ(changed.count(), 1);
    model.reset();
    updates.observer("1.3.0");  // The model is gone.
}

TEST_F(AppModelTest, AnalyticsKeepsItsOwnSwitch) {
    start();
    QSignalSpy changed(&*model, &AppModel::analyticsEnabledChanged);
    model->setAnalyticsEnabled(false);
    model->setAnalyticsEnabled(false);
    EXPECT_FALSE(analytics.enabled);
    EXPECT_FALSE(model->analyticsEnabled());
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(AppModelTest, ViewsBindToItsProperties) {
    start();
    EXPECT_TRUE(model->setProperty("preferredScript", QStringLiteral("traditional")));
    EXPECT_EQ(model->preferredScript(), ChineseScript::traditional);
    model->setProperty("preferredScript", QStringLiteral("klingon"));
    EXPECT_EQ(model->preferredScript(), ChineseScript::traditional);
    EXPECT_TRUE(model->setProperty("dwellDelay", 0.35));
    EXPECT_EQ(model->dwellDelay(), 0.35);
    EXPECT_TRUE(model->setProperty("hoverLookupEnabled", true));
    EXPECT_EQ(model->property("hoverStatus").toString(), QStringLiteral("Hover lookup ready"));
    EXPECT_NE(model->property("permissions").value<PermissionCenter*>(), nullptr);
    moveTo({500, 500});
    clock.advance(0.35);
    answerLast(hovered("知道", 0));
    const QVariantList recents = model->property("recentLookups").toList();
    ASSERT_EQ(recents.size(), 1);
    EXPECT_EQ(recents[0].toMap().value(QStringLiteral("pinyinMarked")).toString(),
              QStringLiteral("zhī dào"));
}

TEST_F(AppModelTest, DiagnosticsSayHowThingsStand) {
    permissions.screenCapture = false;
    startHovering();
    restAt({500, 500});
    answerLast(std::nullopt);
    model->copyLookupDiagnostics();
    EXPECT_EQ(pasteboard.text,
              "Velmora lookup diagnostics\n"
              "Hover lookup enabled: true\n"
              "Accessibility granted: true\n"
              "Screen Recording granted: false\n"
              "Live status: No readable text under cursor\n"
              "Last hover: No readable text under cursor");
    EXPECT_EQ(model->lookupDiagnostics(), pasteboard.text);
}

TEST_F(AppModelTest, FinishingTheFirstOnboardingClosesAndTells) {
    start();
    journal.clear();
    analytics.captured.clear();
    permissions.screenCapture = false;
    model->refreshPermissions();
    onboarding.onComplete();
    EXPECT_EQ(journal, (Journal{"onboarding closed", "accessory"}));
    EXPECT_TRUE(model->onboardingCompleted());
    EXPECT_EQ(settings.boolean("onboardingCompleted"), true);
    EXPECT_EQ(analytics.captured, (std::vector<Captured>{{AnalyticsEvent::onboardingCompleted,
                                                          {{"accessibility_granted", true},
                                                           {"screen_recording_granted", false}}}}));
}

TEST_F(AppModelTest, ClosingTheFirstOnboardingCompletesItToo) {
    start();
    journal.clear();
    onboarding.onClose();
    EXPECT_TRUE(model->onboardingCompleted());
    EXPECT_EQ(journal, (Journal{"accessory"}));
    // The window is forgotten: the next is a new one.
    model->presentOnboarding(false);
    EXPECT_EQ(journal, (Journal{"accessory", "regular", "onboarding again Done", "activate"}));
}

TEST_F(AppModelTest, OnboardingAgainNeitherCompletesNorTellsTwice) {
    settings.setBoolean("onboardingCompleted", true);
    start();
    journal.clear();
    analytics.captured.clear();
    model->presentOnboarding(false);
    model->presentOnboarding(false);
    EXPECT_EQ(journal, (Journal{"regular", "onboarding again Done", "activate",
                                "onboarding to front", "activate"}));
    journal.clear();
    onboarding.onClose();
    EXPECT_EQ(journal, (Journal{"accessory"}));
    model->presentOnboarding(false);
    onboarding.onComplete();
    EXPECT_TRUE(analytics.captured.empty());
}

TEST_F(AppModelTest, FinishingWithoutAWindowMakesAnAgent) {
    settings.setBoolean("onboardingCompleted", true);
    start();
    journal.clear();
    model->finishOnboarding(true);
    EXPECT_EQ(journal, (Journal{"accessory"}));
}

}  // namespace
}  // namespace velmora
