// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/OutlinedText.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "Velmora/Platform/Recognition/InkMask.h"

namespace velmora {

namespace {

constexpr int darkBelow = 70;
constexpr int outlineReach = 4;  ///< Pixels from the middle of a stroke to its outline.
constexpr int coreFrom = 140;    ///< Brightness at which the core begins and where it is full.
constexpr int coreFull = 230;

/// Adds the positions of a strip that have a marked one within reach both before and after them.
template <typename Get, typename Add>
void addEnclosed(int length, Get marked, Add add) {
    std::vector<bool> before(static_cast<std::size_t>(length));
    int last = -outlineReach - 1;
    for (int i = 0; i < length; ++i) {
        last = marked(i) ? i : last;
        before[static_cast<std::size_t>(i)] = i - last <= outlineReach;
    }
    int next = length + outlineReach;
    for (int i = length - 1; i >= 0; --i) {
        next = marked(i) ? i : next;
        if (before[static_cast<std::size_t>(i)] && next - i <= outlineReach) {
            add(i);
        }
    }
}

/// What lies between marked pixels of the same row or of the same column.
template <typename Marked>
InkMask between(int width, int height, Marked marked) {
    InkMask result(width, height);
    for (int y = 0; y < height; ++y) {
        addEnclosed(
            width, [&](int x) { return marked(x, y); }, [&](int x) { result.set(x, y, true); });
    }
    for (int x = 0; x < width; ++x) {
        addEnclosed(
            height, [&](int y) { return marked(x, y); }, [&](int y) { result.set(x, y, true); });
    }
    return result;
}

}  // namespace

GrayImage outlinedTextCore(const Image& image, const PixelBox& box) {
    const GrayImage gray = brightness(image, box);
    const int width = gray.width();
    const int height = gray.height();
    // A stroke has its outline on two sides; where strokes cross, other strokes are around.
    const InkMask strokes =
        between(width, height, [&](int x, int y) { return gray.at(x, y) < darkBelow; });
    const InkMask crossings = between(
        width, height, [&](int x, int y) { return strokes.at(x, y) && gray.at(x, y) >= coreFrom; });
    GrayImage core(width, height, 255);
    for (int y = 0; y < height; ++y) {
        const std::uint32_t* source = image.row(box.top + y) + box.left;
        for (int x = 0; x < width; ++x) {
            if (strokes.at(x, y) || crossings.at(x, y)) {
                // Red and green alone, so that yellow counts as bright as white.
                const auto light =
                    static_cast<int>((((source[x] >> 16) & 255) + ((source[x] >> 8) & 255)) / 2);
                const int depth =
                    std::clamp((light - coreFrom) * 255 / (coreFull - coreFrom), 0, 255);
                core.at(x, y) = static_cast<std::uint8_t>(255 - depth);
            }
        }
    }
    return core;
}

}  // namespace velmora
