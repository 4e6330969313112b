// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "Velmora/Platform/Recognition/PlacedCharacter.h"

namespace velmora {

/// What speaks for an option of a place, by its ink and the readings: a logarithm, of which only
/// differences between options of one place mean something. The better the line's font is known,
/// the more small differences of the ink say and the less the readings do. `fontFit` is 0…1.
float supportOf(const CharacterOption& option, float fontFit);

/// What a word of so many characters over the place adds; 0 where there is none. A weak one: the
/// ink of a font that is known outweighs it wherever it tells the options apart.
float supportOfWord(std::size_t length);

}  // namespace velmora
