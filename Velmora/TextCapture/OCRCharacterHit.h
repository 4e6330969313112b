// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/RecognizedText.h"
#include "VelmoraCore/CharacterText.h"

namespace velmora {

/// The character of a recognised line that the pointer is on. Image pixels, origin at the top left;
/// offsets in characters of the examined text.
struct OCRCharacterHit {
    long long offset = 0;
    Rect rect;

    bool operator==(const OCRCharacterHit&) const = default;

    /// The box of one character of a candidate, `ocrText` being its string; nothing where the
    /// recogniser has none.
    static std::optional<Rect> characterImageRect(const RecognizedText& candidate,
                                                  const CharacterText& ocrText, long long offset,
                                                  Size imageSize);

    /// Whether any Chinese character has a box. A display text as long as the candidate's string
    /// decides which characters are Chinese, otherwise the string itself.
    static bool hasResolvableChineseCharacterBoxes(const RecognizedText& candidate,
                                                   std::string_view displayText, Size imageSize);

    /// The Chinese character nearest to the point, measured by the reach of each one's box; nothing
    /// where none is near enough. The line's rectangle plays no part.
    static std::optional<OCRCharacterHit> cursorCharacterHit(const RecognizedText& candidate,
                                                             std::string_view displayText,
                                                             const Rect& lineRect, Point point,
                                                             Size imageSize);
};

}  // namespace velmora
