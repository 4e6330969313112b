// SPDX-License-Identifier: MIT
#pragma once

namespace velmora {

/// The two grants that the program needs from the desktop. Main thread. The checks return values
/// that are kept current elsewhere and never wait.
class SystemPermissions {
  public:
    virtual ~SystemPermissions() = default;

    /// Whether other programs' texts can be read.
    virtual bool accessibilityTrusted() = 0;

    /// Asks for that grant (here the user has pressed a button, so it may change a setting of the
    /// desktop and wait up to 200 ms for it) and tells whether it is given now.
    virtual bool promptForAccessibility() = 0;

    /// Whether the screen can be captured.
    virtual bool screenCapturePermitted() = 0;

    /// Asks for that grant and tells whether it is given now.
    virtual bool requestScreenCapture() = 0;

    /// Opens the desktop's own settings for "Privacy_Accessibility" or "Privacy_ScreenCapture".
    virtual void openPrivacyPane(const char* anchor) = 0;
};

}  // namespace velmora
