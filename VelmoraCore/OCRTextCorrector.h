// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "VelmoraCore/MatchedTextRange.h"

namespace velmora {

/// Finds where a recognised line fits best in reference texts. Pure functions; any thread.
/// Positions count grapheme clusters; characters are equal under canonical equivalence.
class OCRTextCorrector {
  public:
    struct Alignment {
        std::string text;  ///< The recognised line itself or the reference characters in its place.
        long long referenceIndex = 0;
        MatchedTextRange characterRange;  ///< Characters of that reference, half-open.

        /// Member by member; texts are equal under canonical equivalence.
        bool operator==(const Alignment& other) const;
    };

    /// The best place of the line in the references, or nothing where none is close enough.
    static std::optional<Alignment> align(std::string_view ocrLine,
                                          std::span<const std::string> references);

    /// The aligned text where it differs from the line; nothing means: keep the line.
    static std::optional<std::string> correctedLine(std::string_view ocr,
                                                    std::span<const std::string> references);
};

}  // namespace velmora
