// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/Recognition/GrayImage.h"

namespace velmora {

inline void fill(GrayImage& image, const PixelBox& box, std::uint8_t value) {
    for (int y = box.top; y < box.bottom; ++y) {
        for (int x = box.left; x < box.right; ++x) {
            image.at(x, y) = value;
        }
    }
}

/// An outline of this thickness.
inline void drawFrame(GrayImage& image, const PixelBox& box, int thickness, std::uint8_t value) {
    fill(image, {box.left, box.top, box.right, box.top + thickness}, value);
    fill(image, {box.left, box.bottom - thickness, box.right, box.bottom}, value);
    fill(image, {box.left, box.top, box.left + thickness, box.bottom}, value);
    fill(image, {box.right - thickness, box.top, box.right, box.bottom}, value);
}

/// Something like a character: an upright, three bars and a foot, all connected.
inline void drawCharacter(GrayImage& image, int left, int top, int size, std::uint8_t ink) {
    const int stroke = size / 8 > 1 ? size / 8 : 1;
    fill(image, {left + size / 2, top, left + size / 2 + stroke, top + size}, ink);
    for (int bar = 0; bar < 3; ++bar) {
        const int y = top + bar * (size - stroke) / 2;
        fill(image, {left, y, left + size - 2, y + stroke}, ink);
    }
}

/// `count` of them beside each other, one em apart.
inline void drawLine(GrayImage& image, int left, int top, int size, int count, std::uint8_t ink) {
    for (int i = 0; i < count; ++i) {
        drawCharacter(image, left + i * size, top, size, ink);
    }
}

}  // namespace velmora
