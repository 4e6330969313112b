// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "Velmora/Platform/Recognition/GlyphMatch.h"
#include "Velmora/Platform/Recognition/GrayImage.h"
#include "Velmora/Platform/Recognition/LineReading.h"

namespace velmora {

/// Reads single prepared lines. Every call is bounded in time by the implementation.
class LineReader {
  public:
    virtual ~LineReader() = default;

    /// The characters of a line (black on white), positions in its pixels; nothing where the model
    /// is not there or the reader failed.
    virtual std::optional<LineReading> read(const GrayImage& line, ScriptModel model) = 0;

    /// Has a line read that is about to be asked for, beside whatever else is asked. False where
    /// that cannot be, and nothing is done.
    virtual bool begin(const GrayImage& /*line*/, ScriptModel /*model*/) { return false; }

    /// A character drawn black on white with its em square filling the picture's width and height;
    /// nothing where no font has it.
    virtual std::optional<GrayImage> drawCharacter(char32_t character, ScriptModel style) = 0;

    /// What the ink of some cells is like, one entry for each cell; nothing where the reader does
    /// not know the forms of characters, or not yet.
    virtual std::optional<MatchedCells> matchCells(const CellsToMatch& /*request*/) {
        return std::nullopt;
    }
};

}  // namespace velmora
