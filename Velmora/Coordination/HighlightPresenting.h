// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/Geometry.h"

namespace velmora {

/// Outlines characters on the screen. Main thread; rectangles in screen space.
class HighlightPresenting {
  public:
    virtual ~HighlightPresenting() = default;

    /// Shows or moves the outline; hides it where width or height is not positive.
    virtual void show(const Rect& rect) = 0;

    /// Hides the outline if there is one.
    virtual void orderOut() = 0;
};

}  // namespace velmora
