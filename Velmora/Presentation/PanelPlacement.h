// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/Screens.h"

namespace velmora {

/// On which side of its anchor a panel prefers to stand.
enum class Placement {
    above,  ///< The pinyin bubble.
    below   ///< The entry and selection cards.
};

/// The size of a panel in points: each dimension of `fitting` where it is finite and positive,
/// otherwise that of `fallback`; raised to `minimum`, then lowered to `maximum`, which wins where
/// the bounds cross.
Size measuredSize(Size fitting, Size fallback, Size minimum, Size maximum);

/// The origin (bottom left corner) of a panel of this size beside its anchor; everything in screen
/// space, in points. The panel stays in the visible frame of the first screen that shares an area
/// with the anchor, else of the first screen, else of a zero rectangle. Below means 10 points under
/// the anchor, flipping above it where the panel would reach the bottom edge; above means 16 points
/// over it, flipping below where the panel would reach the top edge. An exact fit flips.
Point origin(Size size, const Rect& anchor, Placement placement,
             const std::vector<Screen>& screens);

}  // namespace velmora
