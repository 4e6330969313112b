// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "Velmora/Platform/AccessibilityElement.h"
#include "VelmoraCore/CharacterText.h"

namespace velmora {

/// Where characters of an element's whole value stand, asked of the element. Capture space.
class ElementCharacters {
  public:
    /// The bounds of the characters from..<to of a text that is the element's whole value; nothing
    /// where the range is not inside the text or the element has no bounds with an area for it.
    static std::optional<Rect> characterRangeBounds(const AccessibilityElement& element,
                                                    const CharacterText& text, long long from,
                                                    long long to);

    /// The Chinese character at the point, searched from an estimate outwards, up to eight
    /// characters to both sides; 17 questions to the other program at most.
    static std::optional<long long> refinedCharacterOffset(const AccessibilityElement& element,
                                                           const CharacterText& text,
                                                           long long offset, Point point);
};

}  // namespace velmora
