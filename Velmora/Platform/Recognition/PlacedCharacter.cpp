// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/PlacedCharacter.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace velmora {

int characterAt(const PlacedLine& line, double x, double reach) {
    int best = -1;
    double nearest = reach;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const CharacterCell& cell = line[i].cell;
        if (cell.width() <= 0) {
            continue;
        }
        const double distance = std::max({0.0, cell.left - x, x - cell.right});
        if (distance < nearest || (distance == 0 && best < 0)) {
            nearest = distance;
            best = static_cast<int>(i);
        }
        if (x >= cell.left && x < cell.right) {
            return static_cast<int>(i);
        }
    }
    return best;
}

const PlacedCharacter* counterpart(const PlacedLine& reading, const CharacterCell& cell) {
    const int at = characterAt(reading, cell.middle(), 1);
    if (at < 0) {
        return nullptr;
    }
    const PlacedCharacter& character = reading[static_cast<std::size_t>(at)];
    const double offset = std::abs(character.cell.middle() - cell.middle());
    return offset <= 0.4 * cell.width() ? &character : nullptr;
}

std::string textOf(const PlacedLine& line) {
    std::string text;
    for (const PlacedCharacter& character : line) {
        text += character.text;
    }
    return text;
}

}  // namespace velmora
