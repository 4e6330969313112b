// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Velmora/Platform/Recognition/PlacedCharacter.h"
#include "Velmora/Platform/Recognition/ReadingWindow.h"
#include "Velmora/Platform/Recognition/WordPatterns.h"

namespace velmora {

/// Chooses among what the places of a line may hold by the words that they make, where the ink
/// alone hardly tells, and says how far the word over a place may be another one.
class WordJudge {
  public:
    /// `words` may be null: then the ink and the readings decide alone.
    explicit WordJudge(const WordPatterns* words) : words_(words) {}

    /// Puts the likeliest option into each place of a window and notes its lead.
    void choose(PlacedLine& line, const ReadingWindow& window) const;

    /// Some word of two or more characters runs over this place.
    bool standsInWord(const PlacedLine& line, std::size_t place) const;

    /// How long the longest word over a place would be with this character in it; 0 for none.
    std::size_t longestWord(const PlacedLine& line, std::size_t place, char32_t character) const;

    /// How sure the word over `focus` is, given how sure each character is: that its characters are
    /// right, and that no character beside it is another one that would make it a longer word.
    float certaintyOfWord(const PlacedLine& line, std::size_t focus,
                          const std::vector<float>& certainties) const;

  private:
    /// A stretch of a line.
    struct Span {
        std::size_t first = 0;
        std::size_t last = 0;

        std::size_t length() const { return last - first; }
    };

    Span longestOver(const std::u32string& text, std::size_t place) const;
    bool chooseAt(PlacedLine& line, std::u32string& text, std::size_t place) const;
    bool choosePair(PlacedLine& line, std::u32string& text, std::size_t place) const;
    float riskOf(const PlacedLine& line, std::u32string& text, std::size_t focus, Span word,
                 std::size_t place) const;

    const WordPatterns* words_;
};

}  // namespace velmora
