// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/TextCapture/TextProbe.h"

namespace velmora {

/// Answers which text lies under a point of the screen.
class TextExtracting {
  public:
    using Completion = std::function<void(std::optional<TextProbe>)>;

    virtual ~TextExtracting() = default;

    /// Returns at once; the completion is called on the main thread, never before this returns.
    /// Calls are served in order. The point and the excluded rectangles (our own visible panels)
    /// are in screen space.
    virtual void extract(Point point, std::vector<Rect> excluding, Completion completion) = 0;
};

}  // namespace velmora
