// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

#include "Velmora/Platform/AccessibilityElement.h"
#include "Velmora/TextCapture/DesktopFlip.h"
#include "Velmora/TextCapture/TextProbe.h"
#include "Velmora/TextCapture/TracedAttempt.h"

namespace velmora {

/// The text around the pointer of an element that knows which character stands where.
class ParameterizedText {
  public:
    /// A probe of the window of text around the character at the pointer (capture space); nothing
    /// where the element does not answer or its answers cannot be true. `contextRadius` is the
    /// number of UTF-16 units before the hovered one; the window is at most twice as long.
    static std::optional<TextProbe> extract(const AccessibilityElement::Pointer& element,
                                            Point pointer, std::int64_t contextRadius,
                                            const DesktopFlip& flip, TracedAttempt& attempt);
};

}  // namespace velmora
