// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/ParameterizedText.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "Velmora/TextCapture/CheckedArithmetic.h"
#include "Velmora/TextCapture/CursorEstimation.h"
#include "Velmora/TextCapture/ElementReading.h"
#include "VelmoraCore/CharacterText.h"

namespace velmora {

namespace {

/// The hovered character's bounds, when they can be those of a character under the pointer.
std::optional<Rect> characterBounds(const AccessibilityElement& element, Utf16Range range,
                                    Point pointer) {
    constexpr double margin = 24;
    const auto bounds = ElementReading::boundsForRange(
        {range.location, std::max<std::int64_t>(range.length, 1)}, element);
    if (!bounds || bounds->isEmpty() || bounds->width > CursorEstimation::largestCharacter ||
        bounds->height > CursorEstimation::largestCharacter ||
        !bounds->grownBy(margin).contains(pointer) ||
        !CursorEstimation::isDirectCharacterHit(*bounds, pointer)) {
        return std::nullopt;
    }
    return bounds;
}

/// A stretch of the element's text around the hovered position.
struct TextWindow {
    std::int64_t start = 0;  ///< Its place in the element's value, in UTF-16 units.
    std::string text;
};

/// An answer that is longer than what was asked for is cut to it.
std::string cutTo(std::int64_t length, std::string text) {
    const auto units = static_cast<std::size_t>(length);
    return utf16Length(text) > units ? utf16Substring(text, 0, units) : std::move(text);
}

std::optional<TextWindow> textWindow(const AccessibilityElement& element, std::int64_t location,
                                     std::int64_t contextRadius) {
    const auto before = checkedDifference(location, contextRadius);
    if (!before) {
        return std::nullopt;
    }
    const std::optional<std::string> full = ElementReading::copyText(element);
    const std::int64_t total =
        full ? static_cast<std::int64_t>(utf16Length(*full))
             : std::max<std::int64_t>(element.longValueLength().value_or(0), 0);
    const std::int64_t start = std::max<std::int64_t>(*before, 0);
    const std::int64_t length = std::min(total - start, 2 * contextRadius);
    if (length < 1) {
        return std::nullopt;
    }
    if (auto text = element.stringForRange({start, length})) {
        return TextWindow{start, cutTo(length, std::move(*text))};
    }
    return TextWindow{start,
                      utf16Substring(full.value_or(std::string()), static_cast<std::size_t>(start),
                                     static_cast<std::size_t>(length))};
}

/// What the range function of a probe needs to know.
struct WindowRanges {
    AccessibilityElement::Pointer element;
    CharacterText text;
    std::int64_t start = 0;
    Point pointer;
    DesktopFlip flip;

    std::optional<Rect> anchorRect(long long from, long long to) const {
        if (from < 0 || from >= to || to > static_cast<long long>(text.count())) {
            return std::nullopt;
        }
        const auto fromUnit =
            static_cast<std::int64_t>(text.utf16Offset(static_cast<std::size_t>(from)));
        const auto toUnit =
            static_cast<std::int64_t>(text.utf16Offset(static_cast<std::size_t>(to)));
        const auto location = checkedSum(start, fromUnit);
        if (!location) {
            return std::nullopt;
        }
        const auto bounds =
            ElementReading::boundsForRange({*location, toUnit - fromUnit}, *element);
        if (!bounds || !CursorEstimation::isPlausibleWordBounds(*bounds, to - from, pointer)) {
            return std::nullopt;
        }
        return flip.flipped(*bounds);
    }
};

}  // namespace

std::optional<TextProbe> ParameterizedText::extract(const AccessibilityElement::Pointer& element,
                                                    Point pointer, std::int64_t contextRadius,
                                                    const DesktopFlip& flip,
                                                    TracedAttempt& attempt) {
    const auto range = element->rangeForPosition(pointer);
    if (!range || range->location == -1) {
        attempt.say("the element knows no character at this point");
        return std::nullopt;
    }
    const auto bounds = characterBounds(*element, *range, pointer);
    if (!bounds) {
        attempt.say(
            [&] { return "no believable bounds for position " + std::to_string(range->location); });
        return std::nullopt;
    }
    auto window = textWindow(*element, range->location, contextRadius);
    if (!window || window->text.empty()) {
        attempt.say([&] { return "no text around position " + std::to_string(range->location); });
        return std::nullopt;
    }
    CharacterText text(window->text);
    const auto unit = std::min(
        static_cast<std::size_t>(std::max<std::int64_t>(range->location - window->start, 0)),
        text.utf16Length());
    const std::size_t offset = text.characterAtUtf16Offset(unit).value_or(text.count());
    attempt.say(
        [&] { return "character " + std::to_string(offset) + " of \"" + text.text() + "\""; });
    TextProbe probe{text.text(), static_cast<long long>(offset), flip.flipped(*bounds),
                    TextProbe::Source::hoveredText, nullptr};
    const auto ranges = std::make_shared<const WindowRanges>(
        WindowRanges{element, std::move(text), window->start, pointer, flip});
    probe.rangeAnchorRect = [ranges](long long from, long long to) {
        return ranges->anchorRect(from, to);
    };
    return probe;
}

}  // namespace velmora
