// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/PermissionCenter.h"

#include <gtest/gtest.h>

#include "Tests/Velmora/Coordination/RecordedPermissions.h"
#include "Velmora/Platform/Recorded/ManualClock.h"

namespace velmora {
namespace {

using testing::RecordedAnalytics;
using testing::RecordedPermissions;
using Captured = RecordedAnalytics::Captured;
using std::string;

struct PermissionCenterTest : ::testing::Test {
    RecordedPermissions system;
    ManualClock clock;
    RecordedAnalytics analytics;
};

TEST_F(PermissionCenterTest, ChecksBothGrantsAtOnce) {
    system.screenCapture = false;
    const PermissionCenter center(system, clock, analytics);
    EXPECT_TRUE(center.accessibilityGranted());
    EXPECT_FALSE(center.screenRecordingGranted());
    EXPECT_TRUE(analytics.captured.empty());
    EXPECT_EQ(system.prompts, 0);
}

TEST_F(PermissionCenterTest, AGrantThatIsGivenOpensNoPane) {
    PermissionCenter center(system, clock, analytics);
    center.requestAccessibility();
    center.requestScreenRecording();
    EXPECT_EQ(system.prompts, 1);
    EXPECT_EQ(system.requests, 1);
    EXPECT_TRUE(system.panes.empty());
    EXPECT_EQ(analytics.captured,
              (std::vector<Captured>{{AnalyticsEvent::permissionRequested,
                                      {{"granted", true},
                                       {"permission", string("accessibility")},
                                       {"status", string("granted")}}},
                                     {AnalyticsEvent::permissionRequested,
                                      {{"granted", true},
                                       {"permission", string("screen_recording")},
                                       {"status", string("granted")}}}}));
}

TEST_F(PermissionCenterTest, ADeniedRequestOpensThePaneAfterTellingIt) {
    system.accessibility = false;
    PermissionCenter center(system, clock, analytics);
    center.requestAccessibility();
    EXPECT_EQ(system.panes, (std::vector<string>{"Privacy_Accessibility"}));
    EXPECT_EQ(analytics.captured,
              (std::vector<Captured>{{AnalyticsEvent::permissionRequested,
                                      {{"granted", false},
                                       {"permission", string("accessibility")},
                                       {"status", string("denied")}}},
                                     {AnalyticsEvent::permissionSettingsOpened,
                                      {{"permission", string("accessibility")}}}}));
}

TEST_F(PermissionCenterTest, ADeniedScreenRecordingOpensItsOwnPane) {
    system.screenCapture = false;
    PermissionCenter center(system, clock, analytics);
    center.requestScreenRecording();
    EXPECT_EQ(system.panes, (std::vector<string>{"Privacy_ScreenCapture"}));
    ASSERT_EQ(analytics.captured.size(), 2U);
    EXPECT_EQ(analytics.captured[1], (Captured{AnalyticsEvent::permissionSettingsOpened,
                                               {{"permission", string("screen_recording")}}}));
}

TEST_F(PermissionCenterTest, AGrantWithinTheSecondIsNoticed) {
    system.accessibility = false;
    PermissionCenter center(system, clock, analytics);
    int changes = 0;
    QObject::connect(&center, &PermissionCenter::accessibilityGrantedChanged,
                     [&](bool granted) { changes += granted ? 1 : 100; });
    center.requestAccessibility();
    clock.advance(0.9);
    system.accessibility = true;
    EXPECT_FALSE(center.accessibilityGranted());
    clock.advance(0.1);
    EXPECT_TRUE(center.accessibilityGranted());
    EXPECT_EQ(changes, 1);
}

TEST_F(PermissionCenterTest, ALaterGrantIsLeftToTheNextCheck) {
    system.accessibility = false;
    PermissionCenter center(system, clock, analytics);
    center.requestAccessibility();
    clock.advance(1.0);
    system.accessibility = true;
    clock.advance(60);
    EXPECT_FALSE(center.accessibilityGranted());
    center.recheck();
    EXPECT_TRUE(center.accessibilityGranted());
}

TEST_F(PermissionCenterTest, EveryRequestHasItsOwnCheck) {
    system.accessibility = false;
    system.screenCapture = false;
    PermissionCenter center(system, clock, analytics);
    center.requestAccessibility();
    clock.advance(0.6);
    center.requestScreenRecording();
    EXPECT_EQ(clock.pendingTimers(), 2U);
    clock.advance(0.5);
    system.screenCapture = true;
    EXPECT_FALSE(center.screenRecordingGranted());
    clock.advance(0.5);
    EXPECT_TRUE(center.screenRecordingGranted());
    EXPECT_EQ(clock.pendingTimers(), 0U);
}

TEST_F(PermissionCenterTest, GoingAwayEndsPendingChecks) {
    system.accessibility = false;
    {
        PermissionCenter center(system, clock, analytics);
        center.requestAccessibility();
    }
    clock.advance(2);
    EXPECT_EQ(clock.pendingTimers(), 0U);
}

TEST_F(PermissionCenterTest, TheUsersWayToTheSettingsIsCounted) {
    PermissionCenter center(system, clock, analytics);
    center.openScreenRecordingSettings();
    center.openAccessibilitySettings();
    EXPECT_EQ(system.panes,
              (std::vector<string>{"Privacy_ScreenCapture", "Privacy_Accessibility"}));
    ASSERT_EQ(analytics.captured.size(), 2U);
    EXPECT_EQ(analytics.captured[0].event, AnalyticsEvent::permissionSettingsOpened);
}

}  // namespace
}  // namespace velmora
