// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/Geometry.h"

namespace velmora {

/// How a recognised picture lies on the screen. Image pixels have their origin at the top left.
struct RegionGeometry {
    Rect captureRect;   ///< What the picture shows (capture space, points).
    Size imageSize;     ///< Its pixels.
    double scaleX = 0;  ///< Pixels per point, horizontally.
    double scaleY = 0;  ///< Pixels per point, vertically.

    /// A point of capture space in image pixels.
    Point imagePoint(Point point) const {
        return {(point.x - captureRect.minX()) * scaleX, (point.y - captureRect.minY()) * scaleY};
    }

    /// A rectangle of image pixels in capture space.
    Rect screenRect(const Rect& rect) const {
        return {captureRect.minX() + rect.minX() / scaleX,
                captureRect.minY() + rect.minY() / scaleY, rect.width / scaleX,
                rect.height / scaleY};
    }
};

/// A box in normalised coordinates (0…1, origin at the bottom left) in image pixels.
inline Rect imageRectOfNormalizedBox(const Rect& box, Size imageSize) {
    return {box.minX() * imageSize.width, (1 - box.maxY()) * imageSize.height,
            box.width * imageSize.width, box.height * imageSize.height};
}

}  // namespace velmora
