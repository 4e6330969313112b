// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "Velmora/Platform/Recognition/CharacterCells.h"

namespace velmora {

/// One character of a line with its place in the picture and what is known about how right it is.
struct PlacedCharacter {
    std::string text;
    float confidence = 0;    ///< The reader's own, 0…1.
    CharacterCell cell;      ///< Columns of the picture.
    bool confirmed = false;  ///< A second look, or the ink itself, says the same.
};

using PlacedLine = std::vector<PlacedCharacter>;

/// The character whose cell holds a column or is nearest to it within `reach`; −1 where none is.
int characterAt(const PlacedLine& line, double x, double reach);

/// All characters of a line.
std::string textOf(const PlacedLine& line);

}  // namespace velmora
