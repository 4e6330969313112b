// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "Velmora/Platform/Recognition/LineReading.h"

namespace velmora {

/// The columns that a character takes up; `right` is not part of them. Empty where the character
/// has no ink of its own.
struct CharacterCell {
    int left = 0;
    int right = 0;

    int width() const { return right - left; }
    double middle() const { return (left + right) / 2.0; }
    bool operator==(const CharacterCell&) const = default;
};

/// Cells for the characters of a line and how well they fit.
struct FittedCells {
    std::vector<CharacterCell> cells;  ///< One for each symbol.
    double em = 0;                     ///< The width of a full-width character, in pixels.
    double cost = 0;                   ///< Per symbol; below about 0.1 all is in its place.
};

/// Places the characters of a reading on the ink of their line: full-width characters get cells of
/// about one em whose edges run through gaps, the reader's own positions only break ties. Found by
/// dynamic programming over the columns, for several sizes of the em. `columns` holds the ink
/// pixels of each column, the symbols' positions count from its start, and `lineHeight` is the
/// height of the line's ink.
FittedCells fitCells(const LineReading& reading, const std::vector<int>& columns, int lineHeight);

/// The most plausible cells where nothing has been read: as many full-width cells as fit.
std::vector<CharacterCell> guessCells(const std::vector<int>& columns, int lineHeight);

}  // namespace velmora
