// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "Velmora/Platform/AccessibilityElement.h"
#include "Velmora/TextCapture/DesktopFlip.h"
#include "Velmora/TextCapture/TextProbe.h"
#include "Velmora/TextCapture/TracedAttempt.h"

namespace velmora {

/// The user's selection, where the pointer is on it.
class SelectedText {
  public:
    /// A probe of the element's selection when it holds Chinese text and its bounds, grown by 3
    /// points, contain the pointer (capture space). The hovered character is the first Chinese one.
    static std::optional<TextProbe> extract(const AccessibilityElement& element, Point pointer,
                                            const DesktopFlip& flip, TracedAttempt& attempt);
};

}  // namespace velmora
