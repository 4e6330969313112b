// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace velmora {

/// True when two texts are canonically equivalent: the same bytes, or different spellings of the
/// same characters ("é" as one code point or as "e" with a combining accent). This is what equal
/// texts means everywhere in the dictionary. Any thread.
bool canonicallyEqual(std::string_view left, std::string_view right);

/// The composed normal form (NFC). Texts are canonically equivalent exactly where these agree.
/// Bytes that are not UTF-8 are kept apart from valid text by being returned unchanged.
std::string composedText(std::string_view text);

}  // namespace velmora
