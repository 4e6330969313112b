// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace velmora {

/// The bytes of the newline character at a byte position of a valid text, 0 where there is none; CR
/// and LF count one each.
std::size_t newlineLength(std::string_view text, std::size_t position);

/// Walks over the lines of a valid UTF-8 text. A line ends at any newline character: LF, CR, the
/// pair CR LF, vertical tab, form feed, U+0085, U+2028, U+2029.
class LineSplitter {
  public:
    /// Without rare line ends (see Utf8Scan) only LF and CR LF are looked for, which is faster.
    explicit LineSplitter(std::string_view text, bool hasRareLineEnds = true)
        : text_(text), hasRareLineEnds_(hasRareLineEnds) {}

    /// The next line that is not empty, without its newline; nothing at the end of the text.
    std::optional<std::string_view> next();

  private:
    std::optional<std::string_view> nextByLineFeed();

    std::string_view text_;
    std::size_t position_ = 0;
    bool hasRareLineEnds_;
};

}  // namespace velmora
