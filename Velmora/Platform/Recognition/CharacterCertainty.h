// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/Recognition/PlacedCharacter.h"

namespace velmora {

/// How likely (0…1) a character is the right one that was compared with the forms of characters:
/// a logistic regression over what is known about it, fitted to drawn screens by
/// Benchmarks/recognition/fit_confidence.py. `inWord`: with its neighbours it makes a word.
float certaintyOf(const PlacedCharacter& character, bool inWord);

}  // namespace velmora
