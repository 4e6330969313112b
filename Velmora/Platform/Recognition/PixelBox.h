// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>

namespace velmora {

/// A rectangle of whole pixels, origin at the top left; right and bottom are not part of it.
struct PixelBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    constexpr int width() const { return right - left; }
    constexpr int height() const { return bottom - top; }
    constexpr bool isEmpty() const { return right <= left || bottom <= top; }

    constexpr PixelBox united(const PixelBox& other) const {
        return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
                std::max(bottom, other.bottom)};
    }
    constexpr PixelBox grownBy(int dx, int dy) const {
        return {left - dx, top - dy, right + dx, bottom + dy};
    }
    /// The part inside an area of this size.
    constexpr PixelBox clippedTo(int areaWidth, int areaHeight) const {
        return {std::clamp(left, 0, areaWidth), std::clamp(top, 0, areaHeight),
                std::clamp(right, 0, areaWidth), std::clamp(bottom, 0, areaHeight)};
    }
    constexpr PixelBox movedBy(int dx, int dy) const {
        return {left + dx, top + dy, right + dx, bottom + dy};
    }

    /// The rows that both span; not positive where they are one above the other.
    constexpr int sharedRows(const PixelBox& other) const {
        return std::min(bottom, other.bottom) - std::max(top, other.top);
    }
    /// The columns between both; negative where they overlap by that many.
    constexpr int columnsBetween(const PixelBox& other) const {
        return std::max(left, other.left) - std::min(right, other.right);
    }

    bool operator==(const PixelBox&) const = default;
};

}  // namespace velmora
