// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/Geometry.h"

namespace velmora {

/// A character or line that a detector found at the pointer.
struct OCRDetectedTextHit {
    Rect rect;         ///< Image pixels, origin at the top left.
    double score = 0;  ///< The lower the better; 0 for characters.

    bool operator==(const OCRDetectedTextHit&) const = default;
};

}  // namespace velmora
