// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::benchmarks {

/// Running text: prose written for this purpose, repeated to about this many characters.
std::string runningText(std::size_t characters);

/// The byte offset of every code point and the length of the text.
std::vector<std::size_t> scalarStarts(std::string_view text);

/// A reference for the line corrector: words of the list one after the other.
std::string wordSalad(const std::string& wordListPath, std::size_t characters);

/// The first so many code points of a text.
std::string prefix(const std::string& text, std::size_t characters);

}  // namespace velmora::benchmarks
