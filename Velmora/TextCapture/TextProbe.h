// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "Velmora/Platform/Geometry.h"

namespace velmora {

/// What text capture found under a screen point. A plain value. Rectangles are in screen space
/// (origin at the bottom left corner of the primary screen, y upwards, in points).
struct TextProbe {
    enum class Source {
        hoveredText,   ///< Text under the pointer.
        selectedText,  ///< The user's selection, which contains the pointer.
    };

    /// Gives the rectangle of the characters start..<end of the probe's text, or nothing.
    using RangeAnchorRect = std::function<std::optional<Rect>(long long start, long long end)>;

    std::string text;                      ///< UTF-8, never empty.
    long long hoveredCharacterOffset = 0;  ///< In grapheme clusters of `text`.
    std::optional<Rect> anchorRect;        ///< The hovered character or the selection.
    Source source = Source::hoveredText;
    RangeAnchorRect rangeAnchorRect;  ///< Absent for selections. May ask the program.
};

}  // namespace velmora
