// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/Screens.h"

namespace velmora {

/// Turns capture space (origin top left of the primary screen, y downwards) into screen space
/// (origin bottom left, y upwards) and back; the same formula serves both ways. The height of the
/// desktop is read at every call, because screens come and go. A value; any thread.
class DesktopFlip {
  public:
    /// `heightOverride` replaces every measurement; `mainDisplayHeight` serves when there is no
    /// screen in the list.
    DesktopFlip(std::optional<double> heightOverride, std::shared_ptr<const Screens> screens,
                double mainDisplayHeight);

    /// The greatest y of the primary screen's frame, in points.
    double desktopHeight() const;

    Point flipped(Point point) const { return {point.x, desktopHeight() - point.y}; }
    Rect flipped(const Rect& rect) const {
        return {rect.minX(), desktopHeight() - rect.maxY(), rect.width, rect.height};
    }

  private:
    std::optional<double> heightOverride_;
    std::shared_ptr<const Screens> screens_;
    double mainDisplayHeight_ = 0;
};

}  // namespace velmora
