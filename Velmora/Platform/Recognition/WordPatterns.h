// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {

/// Words with one character left open: which characters complete 肉?桿菌 to a word. Takes eight
/// bytes for each character of each word. Fill it, `finish` it, then read it from any thread.
class WordPatterns {
  public:
    static constexpr std::size_t longestWord = 6;

    /// Adds a word of 2…6 Han characters; any other text is ignored.
    void add(std::string_view utf8Word);

    /// To be called once after the last word.
    void finish();

    /// The characters that make a word of the text when put in place of its character `gap`.
    std::vector<char32_t> completions(std::u32string_view text, std::size_t gap) const;

    bool contains(std::u32string_view word) const;

    /// All characters that words consist of, sorted.
    std::vector<char32_t> characters() const;

    bool empty() const { return entries_.empty(); }

  private:
    std::vector<std::pair<std::uint32_t, char32_t>> entries_;  ///< By pattern hash.
};

}  // namespace velmora
