// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

#include "Velmora/Platform/Linux/Tesseract/Worker/GlyphFonts.h"
#include "Velmora/Platform/Recognition/GlyphMatch.h"

namespace velmora::testing {

/// Characters in a style, each in a cell of its own with some white around, as the program sends
/// them to be compared. `em` is what it believes the distance to be; 0 for the style's size.
CellsToMatch drawnLine(GlyphFonts& fonts, const std::u32string& text, const GlyphStyle& style,
                       double em = 0);

/// The same with one pixel of `every` turned half over, in a regular pattern: no font draws that.
CellsToMatch roughened(CellsToMatch line, int every);

/// The best match of each cell; a question mark where there is none.
std::u32string bestOf(const MatchedCells& matches);

/// The first of the system's plain fonts, which has a place for every test.
std::size_t plainFace(const GlyphFonts& fonts);

}  // namespace velmora::testing
