// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <deque>

#include "Velmora/Platform/Recognition/LineReader.h"

namespace velmora {

/// Remembers the last lines that another reader has read, and what their cells were like, so that a
/// line that comes up again in a larger capture costs nothing. Keeps no pictures. Not for several
/// threads at once.
class RememberingLineReader : public LineReader {
  public:
    explicit RememberingLineReader(LineReader& reader) : reader_(reader) {}

    std::optional<LineReading> read(const GrayImage& line, ScriptModel model) override;
    bool begin(const GrayImage& line, ScriptModel model) override;
    std::optional<GrayImage> drawCharacter(char32_t character, ScriptModel style) override {
        return reader_.drawCharacter(character, style);
    }
    std::optional<MatchedCells> matchCells(const CellsToMatch& request) override;

  private:
    struct Memory {
        std::uint64_t hash;
        int width;
        ScriptModel model;
        LineReading reading;
    };

    struct Comparison {
        std::uint64_t hash;
        int width;
        std::size_t cells;
        MatchedCells matches;
    };

    const LineReading* remembered(std::uint64_t hash, int width, ScriptModel model) const;

    static constexpr std::size_t mostLines = 48;
    static constexpr std::size_t mostComparisons = 16;

    LineReader& reader_;
    std::deque<Memory> memories_;
    std::deque<Comparison> comparisons_;
};

}  // namespace velmora
