// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/AccessibilityElement.h"

namespace velmora {

/// The entry to other programs' interfaces. Used on the extraction queue only.
class AccessibilitySystem {
  public:
    virtual ~AccessibilitySystem() = default;

    /// The deepest element at a point in capture space (origin top left of the primary screen);
    /// the window itself for a program that is not on the accessibility bus; null over our own
    /// windows, over the bare desktop, and without the grant.
    virtual AccessibilityElement::Pointer elementAtPosition(Point point) = 0;

    /// The element that has the keyboard focus in the focused program, or null.
    virtual AccessibilityElement::Pointer focusedElement() = 0;
};

}  // namespace velmora
