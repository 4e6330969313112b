// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Image.h"

#include <algorithm>
#include <utility>

namespace velmora {

Image::Image(int width, int height, std::vector<std::uint32_t> pixels) {
    if (width < 1 || height < 1 ||
        pixels.size() != static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {
        return;
    }
    width_ = width;
    height_ = height;
    pixels_ = std::make_shared<const std::vector<std::uint32_t>>(std::move(pixels));
}

Image Image::cropped(int x, int y, int width, int height) const {
    const int left = std::clamp(x, 0, width_);
    const int top = std::clamp(y, 0, height_);
    const int right = static_cast<int>(
        std::clamp<std::int64_t>(static_cast<std::int64_t>(x) + width, left, width_));
    const int bottom = static_cast<int>(
        std::clamp<std::int64_t>(static_cast<std::int64_t>(y) + height, top, height_));
    if (right <= left || bottom <= top) {
        return {};
    }
    std::vector<std::uint32_t> pixels;
    pixels.reserve(static_cast<std::size_t>(right - left) * static_cast<std::size_t>(bottom - top));
    for (int line = top; line < bottom; ++line) {
        pixels.insert(pixels.end(), row(line) + left, row(line) + right);
    }
    return {right - left, bottom - top, std::move(pixels)};
}

}  // namespace velmora
