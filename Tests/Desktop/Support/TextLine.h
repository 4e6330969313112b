// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/Image.h"

namespace velmora::test {

/// One line of full-width characters as it was found in a picture, told by nothing but its ink.
/// Rectangles are pixels of the X server, origin at the top left.
struct TextLine {
    Rect ink;          ///< Around everything that is drawn.
    double left = 0;   ///< Where the first character's cell begins.
    double pitch = 0;  ///< The width of a cell.

    /// The columns of some characters, over the height of the line's ink.
    Rect cells(std::size_t first, std::size_t count = 1) const;

    /// The middle of a character.
    Point middle(std::size_t position) const;
};

/// Finds the only group of lines that begin in one column and are equally long, `count` of them
/// with `characters` characters each; nothing where the picture shows no such group.
/// `origin` is where the picture's corner lies on the screen.
std::optional<std::vector<TextLine>> findTextLines(const Image& picture, Point origin,
                                                   std::size_t count, std::size_t characters);

/// What is drawn inside this part of the picture, against the picture's own background; both
/// rectangles on the screen. Nothing where the part is blank.
std::optional<Rect> inkInside(const Image& picture, Point origin, const Rect& part);

}  // namespace velmora::test
