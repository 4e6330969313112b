// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "VelmoraCore/PinyinTone.h"

namespace velmora {

/// How text for people is written: the colours and the width that the output can take.
struct TextStyle {
    bool colours = false;   ///< Escape sequences for colours may be written.
    std::size_t width = 0;  ///< Columns of a line; 0 where lines are not wrapped (a pipe, a file).

    /// What the standard output of this process can take: plain unless it is a terminal, without
    /// colours where NO_COLOR is set or the terminal is dumb.
    static TextStyle ofStandardOutput();

    bool operator==(const TextStyle&) const = default;

    /// The text in the colour of a tone (first red, second yellow, third green, fourth blue,
    /// neutral grey); unchanged without colours.
    std::string toned(std::string_view text, PinyinTone tone) const;

    /// The text in bold, or unchanged without colours.
    std::string strong(std::string_view text) const;

    /// The text in grey, or unchanged without colours.
    std::string quiet(std::string_view text) const;
};

}  // namespace velmora
