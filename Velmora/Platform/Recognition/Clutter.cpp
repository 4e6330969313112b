// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/Clutter.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr int tallestInk = 90;
constexpr int widestInk = 400;

bool isTooLarge(const PixelBox& box) {
    return box.height() > tallestInk || box.width() > widestInk;
}

bool isRule(const PixelBox& box) {
    return (box.width() > 60 && box.height() <= 3) || (box.height() > 45 && box.width() <= 3);
}

int inkIn(const InkMask& mask, const PixelBox& box) {
    int ink = 0;
    for (int y = box.top; y < box.bottom; ++y) {
        const std::uint8_t* row = mask.row(y);
        ink += static_cast<int>(std::count(row + box.left, row + box.right, std::uint8_t{1}));
    }
    return ink;
}

/// A box that is mostly outline: ink along its sides, or hardly any ink for its size.
bool isFrame(const InkMask& mask, const PixelBox& box) {
    if (box.width() <= 24 || box.height() <= 14 || box.width() <= box.height() * 5 / 4) {
        return false;
    }
    int horizontal = 0;
    for (int x = box.left; x < box.right; ++x) {
        horizontal += mask.row(box.top)[x] + mask.row(box.bottom - 1)[x];
    }
    int vertical = 0;
    for (int y = box.top; y < box.bottom; ++y) {
        vertical += mask.row(y)[box.left] + mask.row(y)[box.right - 1];
    }
    const bool topAndBottom = horizontal > 1.6 * box.width() && vertical > 0.8 * box.height();
    const bool leftAndRight = horizontal > 0.8 * box.width() && vertical > 1.6 * box.height();
    return topAndBottom || leftAndRight ||
           inkIn(mask, box) < 0.12 * box.width() * box.height();
}

/// Paints the outermost two pixels of the box with what is just inside them.
void eraseFrame(const PixelBox& box, GrayImage& image, InkMask& mask) {
    const int innerLeft = box.left + 3;
    const int innerRight = box.right - 4;
    const int innerTop = box.top + 3;
    const int innerBottom = box.bottom - 4;
    for (int x = box.left; x < box.right; ++x) {
        const int inside = std::clamp(x, innerLeft, innerRight);
        for (int k = 0; k < 2; ++k) {
            image.at(x, box.top + k) = image.at(inside, innerTop);
            image.at(x, box.bottom - 1 - k) = image.at(inside, innerBottom);
        }
        mask.set(x, box.top, false);
        mask.set(x, box.bottom - 1, false);
    }
    for (int y = box.top; y < box.bottom; ++y) {
        const int inside = std::clamp(y, innerTop, innerBottom);
        for (int k = 0; k < 2; ++k) {
            image.at(box.left + k, y) = image.at(innerLeft, inside);
            image.at(box.right - 1 - k, y) = image.at(innerRight, inside);
        }
        mask.set(box.left, y, false);
        mask.set(box.right - 1, y, false);
    }
}

/// Whether the box holds a filled square of two thirds of its smaller side: no stroke does.
bool isSolid(const InkMask& mask, const PixelBox& box) {
    const int smaller = std::min(box.width(), box.height());
    if (smaller < 7 || box.width() >= 3 * box.height()) {
        return false;
    }
    const int side = std::max(6, smaller * 65 / 100);
    std::vector<int> depth(static_cast<std::size_t>(box.width()), 0);
    for (int y = box.top; y < box.bottom; ++y) {
        int run = 0;
        for (int x = box.left; x < box.right; ++x) {
            int& down = depth[static_cast<std::size_t>(x - box.left)];
            down = mask.at(x, y) ? down + 1 : 0;
            run = down >= side ? run + 1 : 0;
            if (run >= side) {
                return true;
            }
        }
    }
    return false;
}

void eraseIcon(const PixelBox& box, GrayImage& image, InkMask& mask) {
    const PixelBox area = box.grownBy(1, 1).clippedTo(image.width(), image.height());
    const std::uint8_t paper =
        image.nearest(box.left - 3, std::min(image.height() - 1, (box.top + box.bottom) / 2));
    for (int y = area.top; y < area.bottom; ++y) {
        for (int x = area.left; x < area.right; ++x) {
            image.at(x, y) = paper;
            mask.set(x, y, false);
        }
    }
}

}  // namespace

std::vector<PixelBox> removeClutter(const std::vector<PixelBox>& components, GrayImage& image,
                                    InkMask& mask) {
    std::vector<PixelBox> kept;
    for (const PixelBox& box : components) {
        if (isTooLarge(box) || isRule(box)) {
            continue;
        }
        if (isFrame(mask, box)) {
            eraseFrame(box, image, mask);
        } else if (isSolid(mask, box)) {
            eraseIcon(box, image, mask);
        } else {
            kept.push_back(box);
        }
    }
    return kept;
}

}  // namespace velmora
