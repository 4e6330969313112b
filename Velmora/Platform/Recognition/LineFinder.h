// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/Recognition/GrayImage.h"
#include "Velmora/Platform/Recognition/InkMask.h"

namespace velmora {

/// A horizontal line of writing by the box of its ink.
struct TextLine {
    PixelBox box;
};

/// What was found in a picture: the picture without frames and icons, its ink, and the lines from
/// the top.
struct FoundLines {
    GrayImage image;
    InkMask ink;
    std::vector<TextLine> lines;
};

/// Finds lines of writing by the way their ink hangs together: pieces beside each other make
/// lines, pieces above each other make the characters that consist of separate parts. Pure and
/// bounded: where there is more ink than writing could have, only what is nearest to `focus`
/// (pixels; the middle of the picture where it is absent) is looked at.
FoundLines findLines(GrayImage image, std::optional<Point> focus = std::nullopt);

}  // namespace velmora
