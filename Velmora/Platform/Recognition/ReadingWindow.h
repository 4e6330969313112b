// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "Velmora/Platform/Recognition/PixelBox.h"

namespace velmora {

/// Characters first..<last of a line: those around the point of interest.
struct ReadingWindow {
    std::size_t first = 0;
    std::size_t last = 0;
    std::size_t focus = 0;  ///< The character at the point.
    PixelBox box;           ///< Their part of the line, in the picture.
};

}  // namespace velmora
