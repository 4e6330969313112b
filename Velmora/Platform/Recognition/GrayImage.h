// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Velmora/Platform/Image.h"
#include "Velmora/Platform/Recognition/PixelBox.h"

namespace velmora {

/// A picture of brightness values (0 black, 255 white), rows from the top. A plain value.
class GrayImage {
  public:
    GrayImage() = default;
    GrayImage(int width, int height, std::uint8_t fill = 255);

    int width() const { return width_; }
    int height() const { return height_; }
    bool isEmpty() const { return pixels_.empty(); }
    PixelBox bounds() const { return {0, 0, width_, height_}; }

    std::uint8_t at(int x, int y) const { return pixels_[index(x, y)]; }
    std::uint8_t& at(int x, int y) { return pixels_[index(x, y)]; }
    const std::uint8_t* row(int y) const { return pixels_.data() + index(0, y); }
    std::uint8_t* row(int y) { return pixels_.data() + index(0, y); }
    const std::vector<std::uint8_t>& pixels() const { return pixels_; }

    /// The pixel nearest to a position that may lie outside.
    std::uint8_t nearest(int x, int y) const;

    bool operator==(const GrayImage&) const = default;

  private:
    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
               static_cast<std::size_t>(x);
    }

    int width_ = 0;
    int height_ = 0;
    std::vector<std::uint8_t> pixels_;
};

/// The brightness of the part of a picture inside a box, which must lie within the picture.
GrayImage brightness(const Image& image, const PixelBox& box);

/// The picture at another scale, at least 1 × 1 pixel: linear interpolation when it grows, the
/// mean of the covered area when it shrinks.
GrayImage scaled(const GrayImage& image, double factor);

}  // namespace velmora
