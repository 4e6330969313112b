// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "Velmora/Platform/Recognition/InkJudge.h"
#include "Velmora/Platform/Recognition/WordPatterns.h"

namespace velmora {

/// Puts characters right that stand in no word but would make one if another were read.
class WordCompletion {
  public:
    /// `words` may be null: then nothing is ever changed.
    WordCompletion(InkJudge& ink, const WordPatterns* words) : ink_(ink), words_(words) {}

    /// A character that belongs to no word and that nothing confirms is replaced where another one
    /// makes a word with its neighbours and the ink looks more like that.
    void apply(const FoundLines& found, PlacedLine& line, const ReadingWindow& window);

  private:
    bool complete(const FoundLines& found, PlacedLine& line, const ReadingWindow& window,
                  std::size_t place);

    InkJudge& ink_;
    const WordPatterns* words_;
};

}  // namespace velmora
