// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

#include "Velmora/Platform/Linux/AtSpi/AtSpiPermission.h"
#include "Velmora/Platform/SystemPermissions.h"

namespace velmora {

/// Both grants of a desktop: the switch of the accessibility bus, and whatever decides on capturing
/// the screen.
class DesktopPermissions final : public SystemPermissions {
  public:
    /// `screenCapturePermitted` never waits.
    DesktopPermissions(std::shared_ptr<AtSpiService> service,
                       std::function<bool()> screenCapturePermitted);

    bool accessibilityTrusted() override;
    bool promptForAccessibility() override;
    bool screenCapturePermitted() override;
    bool requestScreenCapture() override;
    void openPrivacyPane(const char* anchor) override;

  private:
    AtSpiPermission accessibility_;
    std::function<bool()> screenCapturePermitted_;
};

}  // namespace velmora
