// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/Recognition/GrayImage.h"

namespace velmora {

/// A line made ready for a reader: black on white whatever its colours were, full contrast, scaled
/// to a fixed height, with a white margin; and the way back to the picture it came from.
struct LineImage {
    GrayImage image;
    double scale = 1;     ///< Pixels of `image` per pixel of the source.
    int sourceLeft = 0;   ///< The source column and row of the first pixel inside the margin.
    int sourceTop = 0;
    bool wasLightOnDark = false;

    /// The white border, in pixels of `image`.
    static constexpr int margin = 8;

    /// The source column of a column of `image`.
    double sourceX(double x) const { return sourceLeft + (x - margin) / scale; }
};

/// Cuts a line out of a picture. `inkHeight` is what the height of the line's ink box becomes.
LineImage prepareLine(const GrayImage& picture, const PixelBox& line, double inkHeight);

}  // namespace velmora
