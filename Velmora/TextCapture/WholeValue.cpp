// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/WholeValue.h"

#include <memory>
#include <string>
#include <utility>

#include "Velmora/TextCapture/CursorEstimation.h"
#include "Velmora/TextCapture/ElementCharacters.h"
#include "Velmora/TextCapture/ElementReading.h"
#include "VelmoraCore/CharacterText.h"

namespace velmora {

namespace {

/// The hovered character and where it stands.
struct HoveredCharacter {
    long long offset = 0;
    std::optional<Rect> rect;
};

std::optional<HoveredCharacter> hoveredCharacter(const AccessibilityElement& element,
                                                 const CharacterText& text,
                                                 const std::optional<Rect>& elementBounds,
                                                 Point pointer, TracedAttempt& attempt) {
    const auto estimate = CursorEstimation::estimatedCharacterOffset(text, pointer, elementBounds,
                                                                     std::nullopt, false);
    if (!estimate) {
        attempt.say("no Chinese character where the pointer is estimated to be");
        return std::nullopt;
    }
    const auto rangeBounds =
        ElementCharacters::characterRangeBounds(element, text, *estimate, *estimate + 1);
    const auto refined =
        ElementCharacters::refinedCharacterOffset(element, text, *estimate, pointer);
    if (refined) {
        return HoveredCharacter{*refined, ElementCharacters::characterRangeBounds(
                                              element, text, *refined, *refined + 1)};
    }
    if (rangeBounds || !elementBounds ||
        !CursorEstimation::canEstimateWholeValueHit(*elementBounds, text)) {
        attempt.say(rangeBounds ? "no character near the estimate is at the pointer"
                                : "not a single short line");
        return std::nullopt;
    }
    return HoveredCharacter{*estimate, CursorEstimation::estimatedCharacterRect(
                                           *elementBounds, text, *estimate, std::nullopt)};
}

/// What the range function of a probe needs to know.
struct ValueRanges {
    AccessibilityElement::Pointer element;
    CharacterText text;
    std::optional<Rect> elementBounds;
    Point pointer;
    DesktopFlip flip;

    std::optional<Rect> anchorRect(long long from, long long to) const {
        if (from >= to) {
            return std::nullopt;
        }
        const auto bounds = ElementCharacters::characterRangeBounds(*element, text, from, to);
        if (bounds && CursorEstimation::isPlausibleWordBounds(*bounds, to - from, pointer)) {
            return flip.flipped(*bounds);
        }
        if (!elementBounds || !CursorEstimation::canEstimateWholeValueHit(*elementBounds, text)) {
            return std::nullopt;
        }
        const auto first =
            CursorEstimation::estimatedCharacterRect(*elementBounds, text, from, std::nullopt);
        const auto last =
            CursorEstimation::estimatedCharacterRect(*elementBounds, text, to - 1, std::nullopt);
        if (!first || !last) {
            return std::nullopt;
        }
        return flip.flipped(first->united(*last));
    }
};

}  // namespace

std::optional<TextProbe> WholeValue::extract(const AccessibilityElement::Pointer& element,
                                             Point pointer, const DesktopFlip& flip,
                                             TracedAttempt& attempt) {
    const std::optional<std::string> value = ElementReading::copyText(*element);
    if (!value) {
        attempt.say("no value and no title");
        return std::nullopt;
    }
    CharacterText text(*value);
    const auto elementBounds = ElementReading::boundsForElement(*element);
    const auto hovered = hoveredCharacter(*element, text, elementBounds, pointer, attempt);
    if (!hovered) {
        return std::nullopt;
    }
    attempt.say([&] {
        return "character " + std::to_string(hovered->offset) + " of \"" + text.text() + "\"";
    });
    TextProbe probe{text.text(), hovered->offset, std::nullopt, TextProbe::Source::hoveredText,
                    nullptr};
    if (hovered->rect) {
        probe.anchorRect = flip.flipped(*hovered->rect);
    }
    const auto ranges = std::make_shared<const ValueRanges>(
        ValueRanges{element, std::move(text), elementBounds, pointer, flip});
    probe.rangeAnchorRect = [ranges](long long from, long long to) {
        return ranges->anchorRect(from, to);
    };
    return probe;
}

}  // namespace velmora
