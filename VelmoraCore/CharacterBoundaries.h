// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace velmora {

/// Appends the byte offset of every character (extended grapheme cluster) of a valid UTF-8 text
/// below 4 GiB, and its length at the end: count + 1 offsets, a single 0 for an empty text. Any
/// thread.
void appendCharacterBoundaries(std::string_view text, std::vector<std::uint32_t>& offsets);

}  // namespace velmora
