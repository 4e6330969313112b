// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/Image.h"

namespace velmora {

/// One display, in capture space (origin at the top left corner of the primary screen, y
/// downwards, in points).
struct Display {
    std::uint64_t id = 0;
    Rect bounds;

    bool operator==(const Display&) const = default;
};

/// Pictures of the screen without our own windows in them. Used on the extraction queue.
class ScreenCapture {
  public:
    virtual ~ScreenCapture() = default;

    /// The active displays, the main one first; empty where the list cannot be read.
    virtual std::vector<Display> displays() = 0;

    /// The native pixels of a rectangle of one display (capture space, inside its bounds); nothing
    /// where it cannot be captured. The picture may hold more or fewer pixels than points.
    virtual std::optional<Image> capture(std::uint64_t displayId, const Rect& rect) = 0;
};

}  // namespace velmora
