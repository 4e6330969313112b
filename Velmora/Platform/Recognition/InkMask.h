// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Velmora/Platform/Recognition/GrayImage.h"

namespace velmora {

/// Which pixels of a picture stand out from their background. A plain value.
class InkMask {
  public:
    InkMask() = default;
    InkMask(int width, int height)
        : width_(width),
          height_(height),
          bits_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0) {}

    int width() const { return width_; }
    int height() const { return height_; }
    bool at(int x, int y) const { return row(y)[x] != 0; }
    void set(int x, int y, bool ink) { row(y)[x] = ink ? 1 : 0; }
    const std::uint8_t* row(int y) const {
        return bits_.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width_);
    }
    std::uint8_t* row(int y) {
        return bits_.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width_);
    }

    /// The ink pixels of each column of a box that lies within the mask.
    std::vector<int> columnCounts(const PixelBox& box) const;

  private:
    int width_ = 0;
    int height_ = 0;
    std::vector<std::uint8_t> bits_;
};

/// Marks what differs from the local background, which is the most frequent brightness of each
/// tile and its surroundings, so that light and dark panels may stand side by side.
InkMask findInk(const GrayImage& image);

/// The share (0…1) of the box's pixels whose brightness is close to the most frequent one. Above
/// about 0.4 the text stands on a plain surface, below on a picture.
double backgroundFlatness(const GrayImage& image, const PixelBox& box);

/// The same for the two most frequent brightnesses together: beside the edge of a window there are
/// two plain surfaces, and no picture for that.
double flatnessOfTwoSurfaces(const GrayImage& image, const PixelBox& box);

}  // namespace velmora
