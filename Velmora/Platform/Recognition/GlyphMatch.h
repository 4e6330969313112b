// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "Velmora/Platform/Recognition/CharacterCells.h"
#include "Velmora/Platform/Recognition/GrayImage.h"

namespace velmora {

/// A cell whose ink is to be compared with the characters that fonts have.
struct CellToMatch {
    CharacterCell cell;                ///< Columns of the strip.
    std::vector<char32_t> candidates;  ///< To be compared whatever else is.
};

/// What a line seems to be set in, in the numbers of whoever compared it: only to be handed back.
struct LineStyle {
    std::uint32_t face = 0;
    std::uint32_t rendering = 0;
    float size = 0;  ///< Pixels, above 0.
    float fit = 0;

    bool operator==(const LineStyle&) const = default;
};

/// A piece of a line, black on white at its own size, and the cells in it.
struct CellsToMatch {
    GrayImage strip;
    double em = 0;  ///< The distance of full-width characters, in pixels, as far as is known.
    std::vector<CellToMatch> cells;
    /// What an earlier answer said of the same line; nothing is searched for then.
    std::optional<LineStyle> style = std::nullopt;

    static constexpr std::size_t mostCells = 32;
    static constexpr std::size_t mostCandidates = 32;
    static constexpr std::size_t mostMatches = 16;  ///< That an answer gives for a cell.
};

/// How much a cell's ink is like one character.
struct GlyphMatch {
    char32_t character = 0;
    float shape = 0;  ///< By the directions of strokes, in the font where it is most alike: 0…1.
    float exact = 0;  ///< Pixel by pixel, in the font and size that the line seems to be set in.

    bool operator==(const GlyphMatch&) const = default;
};

/// The matches of each cell, the best first.
struct MatchedCells {
    float fontFit = 0;  ///< How well the best font matches the line, as a mean of `exact`.
    std::vector<std::vector<GlyphMatch>> cells;
    std::optional<LineStyle> style = std::nullopt;  ///< Nothing where no font was tried.
};

}  // namespace velmora
