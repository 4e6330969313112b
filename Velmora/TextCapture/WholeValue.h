// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "Velmora/Platform/AccessibilityElement.h"
#include "Velmora/TextCapture/DesktopFlip.h"
#include "Velmora/TextCapture/TextProbe.h"
#include "Velmora/TextCapture/TracedAttempt.h"

namespace velmora {

/// The whole text of an element, for elements that cannot say which character is at a point.
class WholeValue {
  public:
    /// A probe of the element's text: the hovered character is searched among the bounds of its
    /// ranges, or estimated where the element has no such bounds and is one short line.
    static std::optional<TextProbe> extract(const AccessibilityElement::Pointer& element,
                                            Point pointer, const DesktopFlip& flip,
                                            TracedAttempt& attempt);
};

}  // namespace velmora
