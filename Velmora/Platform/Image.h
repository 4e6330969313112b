// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace velmora {

/// A picture of 32-bit pixels, each 0xAARRGGBB in native order, rows from the top without padding.
/// The pixels are shared and never changed after construction, so copies are cheap.
class Image {
  public:
    Image() = default;

    /// `pixels` holds width × height values; an image of another count is empty.
    Image(int width, int height, std::vector<std::uint32_t> pixels);

    int width() const { return width_; }
    int height() const { return height_; }
    bool isEmpty() const { return width_ < 1 || height_ < 1; }

    /// The row's first pixel; `y` from 0 to height − 1.
    const std::uint32_t* row(int y) const {
        return pixels_->data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width_);
    }

    /// The part inside this rectangle of pixels, clipped to the image; empty where they miss.
    Image cropped(int x, int y, int width, int height) const;

  private:
    int width_ = 0;
    int height_ = 0;
    std::shared_ptr<const std::vector<std::uint32_t>> pixels_;
};

}  // namespace velmora
