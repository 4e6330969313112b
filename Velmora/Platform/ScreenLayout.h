// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "Velmora/Platform/Geometry.h"

namespace velmora {

/// One screen as the window system lays it out, in native pixels (origin at the top left corner of
/// the whole desktop, y downwards).
struct ScreenLayout {
    std::uint64_t id = 0;  ///< The same for as long as the screen is attached; never 0.
    Rect nativeFrame;
    double ratio = 1;     ///< Native pixels per point; above 0.
    Rect nativeWorkArea;  ///< The frame less panels and docks.

    bool operator==(const ScreenLayout&) const = default;
};

}  // namespace velmora
