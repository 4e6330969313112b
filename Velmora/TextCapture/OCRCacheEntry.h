// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/TextCapture/RecognizedRegion.h"

namespace velmora {

/// The region that was recognised last.
struct OCRCacheEntry {
    RecognizedRegion region;
    double timestamp = 0;  ///< Uptime in seconds when it was looked for.
    Point pointer;         ///< The place (capture space) for which its lines were read.

    /// Longer than this, in seconds, a region is not reused.
    static constexpr double lifetime = 1.5;

    /// Pictures of more pixels are not kept with the region.
    static constexpr double largestKeptImage = 4.0 * 1024 * 1024;

    /// Whether the region may serve for a pointer (capture space) at an uptime: it is fresh and the
    /// pointer keeps `reuseInset` points from the edges of what was captured.
    bool serves(Point at, double now, double reuseInset) const {
        return now - timestamp <= lifetime && region.captureRect.grownBy(-reuseInset).contains(at);
    }

    /// Keeps the lines without their picture where that is large.
    void dropLargeImage() {
        if (region.imageSize.width * region.imageSize.height > largestKeptImage) {
            region.image = Image();
        }
    }
};

}  // namespace velmora
