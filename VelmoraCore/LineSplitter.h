// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace velmora {

/// Walks over the lines of a valid UTF-8 text. A line ends at any newline character: LF, CR, the
/// pair CR LF, vertical tab, form feed, U+0085, U+2028, U+2029.
class LineSplitter {
  public:
    explicit LineSplitter(std::string_view text) : text_(text) {}

    /// The next line that is not empty, without its newline; nothing at the end of the text.
    std::optional<std::string_view> next();

  private:
    std::size_t newlineAt(std::size_t position) const;

    std::string_view text_;
    std::size_t position_ = 0;
};

}  // namespace velmora
