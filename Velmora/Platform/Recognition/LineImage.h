// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/Recognition/GrayImage.h"

namespace velmora {

/// A line made ready for a reader: black on white whatever its colours were, full contrast, always
/// `height` pixels high with the ink in the middle, white on both sides; and the way back to the
/// picture it came from.
struct LineImage {
    GrayImage image;
    double scale = 1;    ///< Pixels of `image` per pixel of the source.
    int sourceLeft = 0;  ///< The source column of the first pixel after the margin.
    bool wasLightOnDark = false;

    /// What the readers' networks work on, so that they need not scale once more.
    static constexpr int height = 48;
    /// The white on the left and on the right, in pixels of `image`.
    static constexpr int margin = 16;

    /// The source column of a column of `image`.
    double sourceX(double x) const { return sourceLeft + (x - margin) / scale; }
};

/// Cuts a line out of a picture. `inkHeight` is what the height of the line's ink box becomes, at
/// most `LineImage::height`.
LineImage prepareLine(const GrayImage& picture, const PixelBox& line, double inkHeight);

/// The part of a picture inside a box, black on white with full contrast, at its own size and
/// without anything around it; empty where the box misses the picture. What is paper and what is
/// ink is taken from `line`, as a dense character alone may be more ink than paper.
GrayImage cutBlackOnWhite(const GrayImage& picture, const PixelBox& box, const PixelBox& line);

}  // namespace velmora
