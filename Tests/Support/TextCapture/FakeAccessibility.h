// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "Velmora/Platform/AccessibilitySystem.h"

namespace velmora {

/// A desktop with one element under the pointer, wherever that is.
class FakeAccessibility final : public AccessibilitySystem {
  public:
    AccessibilityElement::Pointer elementAtPosition(Point point) override {
        asked.push_back(point);
        return element;
    }
    AccessibilityElement::Pointer focusedElement() override { return focused; }

    AccessibilityElement::Pointer element;
    AccessibilityElement::Pointer focused;
    std::vector<Point> asked;
};

}  // namespace velmora
