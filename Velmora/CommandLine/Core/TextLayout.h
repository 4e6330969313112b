// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velmora {

/// The text with every control character, and every byte that is not UTF-8, replaced by U+FFFD, so
/// that nothing from outside can steer the terminal it is shown on.
std::string printable(std::string_view text);

/// The number of terminal columns of a text without escape sequences: two for wide and full-width
/// characters, none for combining marks and format characters, one for the rest.
std::size_t columnsOf(std::string_view utf8);

/// The text broken into lines that fit `width` columns, each after the first beginning with
/// `indent` blanks. The first line starts at column `used`. Breaks at blanks and beside wide
/// characters; a longer run is left whole. A width of 0 leaves everything on one line.
std::string wrapText(std::string_view utf8, std::size_t used, std::size_t indent,
                     std::size_t width);

/// The text followed by blanks up to `columns`.
std::string padded(std::string_view utf8, std::size_t columns);

}  // namespace velmora
