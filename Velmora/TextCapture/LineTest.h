// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>

#include "Velmora/Platform/Geometry.h"

namespace velmora {

/// Whether a point counts as lying on a line of text: up to 8 pixels beside it, and above and below
/// it up to 0.24 of its height, 5 to 12 pixels. Both in image pixels.
inline bool isOnLine(const Rect& line, Point point) {
    if (!(line.width > 0) || !(line.height > 0)) {
        return false;
    }
    constexpr double beside = 8;
    const double tolerance = std::clamp(line.height * 0.24, 5.0, 12.0);
    return line.grownBy(beside, tolerance).contains(point) &&
           std::abs(point.y - line.midY()) <= tolerance + line.height * 0.5;
}

}  // namespace velmora
