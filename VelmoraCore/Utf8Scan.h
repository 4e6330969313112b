// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace velmora {

/// What one pass over the bytes of a text tells.
struct Utf8Scan {
    bool valid = false;  ///< Well-formed UTF-8.

    /// False where every line end is LF or CR LF; true where any other newline character may occur.
    /// Means nothing for a text that is not valid.
    bool hasRareLineEnds = false;

    /// Looks at every byte once, with vector instructions where the processor has them.
    static Utf8Scan of(std::string_view bytes);

    /// The same without vector instructions, for the tests to compare.
    static Utf8Scan portable(std::string_view bytes);
};

}  // namespace velmora
