// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "Velmora/Platform/Recognition/LineFinder.h"
#include "Velmora/Platform/Recognition/LineReader.h"
#include "Velmora/Platform/Recognition/PlacedCharacter.h"
#include "Velmora/Platform/Recognition/ReadingWindow.h"

namespace velmora {

/// Reads the cells of a window anew, each by itself, from what their ink is like, and settles with
/// the readings of the line which characters they are.
class GlyphJudge {
  public:
    struct Verdict {
        float fontFit = 0;         ///< How well the line's font is known: 1 is perfectly.
        std::size_t changed = 0;   ///< Characters that were not as the line had them.
        std::size_t compared = 0;  ///< Of so many.
        bool settled = false;      ///< Every one is clear, and no other reading is needed.
        PlacedLine runnersUp;      ///< The line with the second best where that is close.
        bool hasRunnersUp = false;
        std::optional<LineStyle> style;  ///< What the line is set in.
    };

    explicit GlyphJudge(LineReader& reader) : reader_(reader) {}

    /// Replaces characters of the line by what they are, and marks those that are confirmed; the
    /// window, whose `focus` is the character at the column `focus`, follows. `others` are further
    /// readings of it; `style` is that of an earlier verdict on it. Nothing where no forms are at
    /// hand.
    std::optional<Verdict> judge(const FoundLines& found, PlacedLine& line, ReadingWindow& window,
                                 double focus, const std::vector<const PlacedLine*>& others,
                                 const std::optional<LineStyle>& style = std::nullopt);

  private:
    /// What is asked of the reader.
    struct Strip {
        CellsToMatch request;
        int left = 0;  ///< Of the strip in the picture.

        bool add(const CharacterCell& cell, std::vector<char32_t> candidates);
    };

    static Strip cutStrip(const FoundLines& found, const ReadingWindow& window, double pitch);
    std::optional<MatchedCells> match(const Strip& strip);
    std::size_t regrid(const FoundLines& found, PlacedLine& line, const std::vector<bool>& certain,
                       ReadingWindow& window, double pitch, const MatchedCells& matched);
    static void finish(const PlacedLine& line, const ReadingWindow& window, Verdict& verdict);

    LineReader& reader_;
};

}  // namespace velmora
