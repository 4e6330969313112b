// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "Velmora/Platform/Geometry.h"
#include "VelmoraCore/CharacterText.h"

namespace velmora {

/// Which character the pointer is on, judged by geometry alone, and whether a rectangle is
/// believable as that of a character or a word. Pure functions; any one coordinate space; offsets
/// count characters (grapheme clusters).
class CursorEstimation {
  public:
    /// Wider or higher than this is no character.
    static constexpr double largestCharacter = 150;

    /// Whether the point is on the rectangle or as good as on it (2 to 6 points beside it).
    static bool isDirectCharacterHit(const Rect& rect, Point point);

    /// Whether this may be the rectangle of the character under the point.
    static bool isPlausibleCharacterBounds(const Rect& rect, Point point);

    /// Whether this may be the rectangle of a word of so many characters near the point.
    static bool isPlausibleWordBounds(const Rect& rect, long long characterCount, Point point);

    /// The Chinese character at the point in a single line of equally wide characters that fill
    /// the bounds less an inset on both sides (8 % of the width, 8 to 24, where none is given).
    /// Where another character stands there, nothing, or with the fallback the nearest Chinese
    /// character at most three away.
    static std::optional<long long> estimatedCharacterOffset(const CharacterText& text, Point point,
                                                             const std::optional<Rect>& bounds,
                                                             std::optional<double> horizontalInset,
                                                             bool allowNearbyChineseFallback);

    /// The cell of one character in such a line; nothing where there is no such character.
    static std::optional<Rect> estimatedCharacterRect(const Rect& bounds, const CharacterText& text,
                                                      long long offset,
                                                      std::optional<double> horizontalInset);

    /// Whether a text in an element of this size may be taken for a single short line.
    static bool canEstimateWholeValueHit(const Rect& bounds, const CharacterText& text);

    /// The number of Chinese characters.
    static long long chineseCharacterCount(const CharacterText& text);
};

}  // namespace velmora
