// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/AccessibilitySystem.h"
#include "Velmora/Platform/Unavailable/Unavailability.h"

namespace velmora {

/// No elements anywhere.
class UnavailableAccessibilitySystem final : public AccessibilitySystem, public Unavailability {
  public:
    using Unavailability::Unavailability;

    AccessibilityElement::Pointer elementAtPosition(Point /*point*/) override { return nullptr; }
    AccessibilityElement::Pointer focusedElement() override { return nullptr; }
};

}  // namespace velmora
