// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "VelmoraCore/LookupResult.h"

namespace velmora {

/// The texts that tell what a lookup shows. Pure functions.

/// "dictionary" where Shift is held, else "pinyin".
constexpr std::string_view lookupModeName(bool dictionary) {
    return dictionary ? "dictionary" : "pinyin";
}

/// The status line while a hovered word is shown.
std::string hoveredStatus(std::string_view matchedText, bool dictionary);

/// The status line while the words of a selection are shown.
std::string selectionStatus(std::size_t count, bool dictionary);

/// The readings of the first six words, three blanks apart.
std::string pinyinLine(const std::vector<LookupResult>& results);

}  // namespace velmora
