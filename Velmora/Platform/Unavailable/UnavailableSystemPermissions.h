// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/SystemPermissions.h"
#include "Velmora/Platform/Unavailable/Unavailability.h"

namespace velmora {

/// Nothing is granted.
class UnavailableSystemPermissions final : public SystemPermissions, public Unavailability {
  public:
    using Unavailability::Unavailability;

    bool accessibilityTrusted() override { return false; }
    bool promptForAccessibility() override { return false; }
    bool screenCapturePermitted() override { return false; }
    bool requestScreenCapture() override { return false; }
    void openPrivacyPane(const char* /*anchor*/) override {}
};

}  // namespace velmora
