// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "Velmora/Platform/Recognition/CharacterCells.h"

namespace velmora {

/// What a place of a line may hold, and what speaks for it.
struct CharacterOption {
    char32_t character = 0;
    float exact = 0;  ///< How well it fits the ink in the line's font.
    float shape = 0;  ///< How like the ink its strokes run.
    float read = 0;   ///< How sure the line's reading is of it; 0 where that says something else.
    float votes = 0;  ///< So many further readings say it.
};

/// One character of a line with its place in the picture and what is known about how right it is.
struct PlacedCharacter {
    std::string text;
    float confidence = 0;    ///< The reader's own, 0…1.
    CharacterCell cell;      ///< Columns of the picture.
    bool confirmed = false;  ///< A second look, or the ink itself, says the same.
    float exact = 0;         ///< How well it fits the ink in the line's font; 0 where unknown.
    float margin = 0;        ///< By how much it does so better than any other character.
    float shape = 0;         ///< How like the ink its strokes run.
    float fit = 0;           ///< How well the line's font is known.
    std::string runnerUp{};  ///< What it may be instead; empty where nothing comes close.
    bool agreed = false;     ///< The reader of the whole line says the same as the ink.
    float lead = 0;          ///< By what support it outweighs all its other options together.
    std::vector<CharacterOption> options{};  ///< The likeliest, by the ink and the readings.
};

using PlacedLine = std::vector<PlacedCharacter>;

/// The character whose cell holds a column or is nearest to it within `reach`; −1 where none is.
int characterAt(const PlacedLine& line, double x, double reach);

/// The character of another reading that stands in a cell of this one, or null.
const PlacedCharacter* counterpart(const PlacedLine& reading, const CharacterCell& cell);

/// All characters of a line.
std::string textOf(const PlacedLine& line);

}  // namespace velmora
