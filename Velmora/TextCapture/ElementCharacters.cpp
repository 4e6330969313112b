// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/ElementCharacters.h"

#include <cstddef>

#include "Velmora/TextCapture/CursorEstimation.h"
#include "Velmora/TextCapture/ElementReading.h"

namespace velmora {

namespace {

bool isCharacterAt(const AccessibilityElement& element, const CharacterText& text,
                   long long candidate, Point point) {
    if (candidate < 0 || candidate >= static_cast<long long>(text.count()) ||
        !isChinese(text[static_cast<std::size_t>(candidate)])) {
        return false;
    }
    const auto rect =
        ElementCharacters::characterRangeBounds(element, text, candidate, candidate + 1);
    return rect && CursorEstimation::isPlausibleCharacterBounds(*rect, point) &&
           rect->contains(point);
}

}  // namespace

std::optional<Rect> ElementCharacters::characterRangeBounds(const AccessibilityElement& element,
                                                            const CharacterText& text,
                                                            long long from, long long to) {
    if (from < 0 || from >= to || to > static_cast<long long>(text.count())) {
        return std::nullopt;
    }
    const auto start = static_cast<std::int64_t>(text.utf16Offset(static_cast<std::size_t>(from)));
    const auto end = static_cast<std::int64_t>(text.utf16Offset(static_cast<std::size_t>(to)));
    const auto bounds = ElementReading::boundsForRange({start, end - start}, element);
    if (!bounds || bounds->isEmpty()) {
        return std::nullopt;
    }
    return bounds;
}

std::optional<long long> ElementCharacters::refinedCharacterOffset(
    const AccessibilityElement& element, const CharacterText& text, long long offset, Point point) {
    constexpr long long reach = 8;
    if (isCharacterAt(element, text, offset, point)) {
        return offset;
    }
    for (long long distance = 1; distance <= reach; ++distance) {
        for (const long long candidate : {offset - distance, offset + distance}) {
            if (isCharacterAt(element, text, candidate, point)) {
                return candidate;
            }
        }
    }
    return std::nullopt;
}

}  // namespace velmora
