// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

#include "Velmora/Platform/Recognition/CharacterCells.h"
#include "Velmora/Platform/Recognition/PlacedCharacter.h"
#include "Velmora/Platform/Recognition/ReadingWindow.h"

namespace velmora {

/// The distance of full-width characters in a line, from those that stand side by side; 0 where
/// nothing tells.
double pitchOf(const PlacedLine& line);

/// The same, measured again between neighbours that are both certain, so that what was read of
/// something else or twice does not count; the one given where there are none.
double pitchOfCertain(const PlacedLine& line, const std::vector<bool>& certain, double pitch);

/// Where full-width characters should stand between, before and after those of a window that are
/// certain, if they go on in their pitch: the places of characters that were read as something
/// narrower, were left out, or whose cells are a little off. `certain` has an entry for each
/// character of the line.
std::vector<CharacterCell> cellsOnGrid(const PlacedLine& line, const std::vector<bool>& certain,
                                       const ReadingWindow& window, double pitch);

/// Puts a character into a line in place of all those whose middle lies in its cell. The cells
/// of its neighbours reach to it, where only a little was missing.
void replaceWithin(PlacedLine& line, const PlacedCharacter& character);

}  // namespace velmora
