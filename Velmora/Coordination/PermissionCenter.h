// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <memory>
#include <string_view>
#include <vector>

#include "Velmora/Diagnostics/Analytics.h"
#include "Velmora/Platform/Clock.h"
#include "Velmora/Platform/SystemPermissions.h"

namespace velmora {

/// The two grants that the program needs, as observable flags, and the ways to ask for them. The
/// flags change by explicit checks only. Main thread.
class PermissionCenter final : public QObject {
    Q_OBJECT
    Q_PROPERTY(
        bool accessibilityGranted READ accessibilityGranted NOTIFY accessibilityGrantedChanged)
    Q_PROPERTY(bool screenRecordingGranted READ screenRecordingGranted NOTIFY
                   screenRecordingGrantedChanged)

  public:
    /// Checks both grants. The three outlive this object.
    PermissionCenter(SystemPermissions& system, Clock& clock, Analytics& analytics);
    ~PermissionCenter() override;

    bool accessibilityGranted() const { return accessibilityGranted_; }
    bool screenRecordingGranted() const { return screenRecordingGranted_; }

    /// Sets both flags to what the desktop says now.
    void recheck();

    /// Asks the desktop for the grant; opens its settings where the answer is no. One second later
    /// both flags are checked again, once.
    Q_INVOKABLE void requestAccessibility();
    Q_INVOKABLE void requestScreenRecording();

    /// The user's way to the desktop's settings for one grant, counted among the usage events.
    Q_INVOKABLE void openAccessibilitySettings();
    Q_INVOKABLE void openScreenRecordingSettings();

    /// Opens the desktop's settings: "Privacy_Accessibility" or "Privacy_ScreenCapture".
    void openPrivacyPane(const QString& anchor);

  signals:
    void accessibilityGrantedChanged(bool granted);
    void screenRecordingGrantedChanged(bool granted);

  private:
    void setAccessibilityGranted(bool granted);
    void setScreenRecordingGranted(bool granted);
    void reportRequest(std::string_view permission, bool granted);
    void reportSettingsOpened(std::string_view permission);
    void refreshAfterPermissionChange();

    SystemPermissions& system_;
    Clock& clock_;
    Analytics& analytics_;
    bool accessibilityGranted_ = false;
    bool screenRecordingGranted_ = false;

    struct Recheck {
        std::unique_ptr<OneShotTimer> timer;
        bool done = false;
    };
    std::vector<std::shared_ptr<Recheck>> rechecks_;
};

}  // namespace velmora
