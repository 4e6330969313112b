// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

namespace velmora {

/// A small picture for the tray: rows from the top, each pixel 0xAARRGGBB, not premultiplied.
struct StatusIconPixmap {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    bool operator==(const StatusIconPixmap&) const = default;
};

}  // namespace velmora
