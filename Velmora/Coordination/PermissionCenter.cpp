// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/PermissionCenter.h"

#include <string>

namespace velmora {

namespace {

constexpr std::string_view accessibility = "accessibility";
constexpr std::string_view screenRecording = "screen_recording";
constexpr double secondsBeforeRecheck = 1.0;

}  // namespace

PermissionCenter::PermissionCenter(SystemPermissions& system, Clock& clock, Analytics& analytics)
    : system_(system), clock_(clock), analytics_(analytics) {
    recheck();
}

PermissionCenter::~PermissionCenter() = default;

void PermissionCenter::recheck() {
    // Both are read before either is told, so that a listener never sees one new and one old.
    const bool accessibilityNow = system_.accessibilityTrusted();
    const bool screenRecordingNow = system_.screenCapturePermitted();
    setScreenRecordingGranted(screenRecordingNow);
    setAccessibilityGranted(accessibilityNow);
}

void PermissionCenter::requestAccessibility() {
    setAccessibilityGranted(system_.promptForAccessibility());
    reportRequest(accessibility, accessibilityGranted_);
    refreshAfterPermissionChange();
    if (!accessibilityGranted_) {
        openAccessibilitySettings();
    }
}

void PermissionCenter::requestScreenRecording() {
    setScreenRecordingGranted(system_.requestScreenCapture());
    reportRequest(screenRecording, screenRecordingGranted_);
    refreshAfterPermissionChange();
    if (!screenRecordingGranted_) {
        openScreenRecordingSettings();
    }
}

void PermissionCenter::openAccessibilitySettings() {
    reportSettingsOpened(accessibility);
    openPrivacyPane(QStringLiteral("Privacy_Accessibility"));
}

void PermissionCenter::openScreenRecordingSettings() {
    reportSettingsOpened(screenRecording);
    openPrivacyPane(QStringLiteral("Privacy_ScreenCapture"));
}

void PermissionCenter::openPrivacyPane(const QString& anchor) {
    system_.openPrivacyPane(anchor.toUtf8().constData());
}

void PermissionCenter::setAccessibilityGranted(bool granted) {
    if (granted != accessibilityGranted_) {
        accessibilityGranted_ = granted;
        emit accessibilityGrantedChanged(granted);
    }
}

void PermissionCenter::setScreenRecordingGranted(bool granted) {
    if (granted != screenRecordingGranted_) {
        screenRecordingGranted_ = granted;
        emit screenRecordingGrantedChanged(granted);
    }
}

void PermissionCenter::reportRequest(std::string_view permission, bool granted) {
    analytics_.capture(AnalyticsEvent::permissionRequested,
                       {{"granted", granted},
                        {"permission", std::string(permission)},
                        {"status", std::string(granted ? "granted" : "denied")}});
}

void PermissionCenter::reportSettingsOpened(std::string_view permission) {
    analytics_.capture(AnalyticsEvent::permissionSettingsOpened,
                       {{"permission", std::string(permission)}});
}

void PermissionCenter::refreshAfterPermissionChange() {
    std::erase_if(rechecks_, [](const auto& recheck) { return recheck->done; });
    const auto next = std::make_shared<Recheck>();
    rechecks_.push_back(next);
    next->timer =
        clock_.schedule(secondsBeforeRecheck, [this, weak = std::weak_ptr<Recheck>(next)] {
            if (const auto fired = weak.lock()) {
                fired->done = true;
            }
            recheck();
        });
}

}  // namespace velmora
