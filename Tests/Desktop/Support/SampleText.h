// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "VelmoraCore/LookupEngine.h"

namespace velmora::test {

/// The text that programs show: lines of equally many Chinese characters with blank lines around
/// them, so that each line stands alone in a picture of the window.
class SampleText {
  public:
    static constexpr std::size_t charactersPerLine = 14;

    SampleText();

    const std::vector<std::string>& lines() const { return lines_; }

    /// One character of one line.
    std::string character(std::size_t line, std::size_t position) const;

    /// The word of the dictionary that covers the character.
    LookupResult word(std::size_t line, std::size_t position) const;

    /// The words of a line, or of any text, as they follow each other.
    std::vector<LookupResult> words(std::size_t line) const;
    std::vector<LookupResult> wordsOf(const std::string& text) const;

    std::string plain() const;         ///< A text file.
    std::string html() const;          ///< A page.
    std::string openDocument() const;  ///< A flat text document.

  private:
    std::vector<std::string> lines_;
    LookupEngine engine_;
};

}  // namespace velmora::test
