// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// The fields of one line of a CC-CEDICT word list; views into the line, which must be valid UTF-8
/// and outlive them.
struct CedictLine {
    std::string_view traditional;
    std::string_view simplified;
    std::string_view reading;
    std::string_view glossList;  ///< What lies between the first and the last slash.

    /// The fields of an entry's line; nothing for a comment or a malformed line.
    static std::optional<CedictLine> parse(std::string_view line);

    /// The non-empty pieces of the gloss list in order, verbatim. Never empty for a parsed line.
    std::vector<std::string> glosses() const;
};

}  // namespace velmora
