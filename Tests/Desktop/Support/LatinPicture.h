// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "Tests/Support/VirtualDesktop/VirtualDesktop.h"

namespace velmora::test {

/// A picture like a photograph with English text on it, without a Chinese character, that fills a
/// whole screen: what costs most to find nothing in.
struct LatinPicture {
    static constexpr int width = 1920;
    static constexpr int height = 1080;

    /// Draws it, shows it in an image viewer over the whole desktop, which must be of that size,
    /// and waits until it is there; throws std::runtime_error where that does not happen.
    static void show(VirtualDesktop& desktop);

    /// Places on and between its words, and on the picture alone.
    static std::vector<Point> places();
};

}  // namespace velmora::test
