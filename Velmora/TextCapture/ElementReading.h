// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "Velmora/Platform/AccessibilityElement.h"
#include "Velmora/Platform/AccessibilitySystem.h"
#include "Velmora/TextCapture/ReferenceSource.h"

namespace velmora {

/// Reads of other programs' elements, with what cannot be true refused: rectangles that are not
/// finite, texts without end. Capture space, UTF-16 units. Extraction queue, except for
/// `boundsForRange`, which may be called on the main thread too.
class ElementReading {
  public:
    using Element = AccessibilityElement::Pointer;

    /// How far up the chain of parents is followed. Also what ends a chain that is a circle.
    static constexpr std::size_t maximumAncestors = 4;

    /// Values and titles of more code points are not read as a whole.
    static constexpr std::size_t longestText = 20'000;

    /// Selections of more bytes are ignored.
    static constexpr std::size_t longestSelection = 1U << 20U;

    /// The element, its parent, grandparent and so on: five at most.
    static std::vector<Element> candidateElements(const Element& start);

    /// The focused element of the focused program; empty where there is none.
    static std::vector<Element> focusedElements(AccessibilitySystem& system);

    /// The given elements and, behind them, the chain of the focused element; none twice.
    static std::vector<Element> selectedTextCandidates(const std::vector<Element>& base,
                                                       AccessibilitySystem& system);

    /// The selected text where there is one of a believable size.
    static std::optional<std::string> copySelectedText(const AccessibilityElement& element);

    /// The selected range where something is selected.
    static std::optional<Utf16Range> copySelectedTextRange(const AccessibilityElement& element);

    /// The value, else the title, whichever is not empty; nothing where the value is too long.
    static std::optional<std::string> copyText(const AccessibilityElement& element);

    /// Where a range of the value stands. No check of its size.
    static std::optional<Rect> boundsForRange(Utf16Range range,
                                              const AccessibilityElement& element);

    /// Where the element stands, if it has an area.
    static std::optional<Rect> boundsForElement(const AccessibilityElement& element);

    /// The texts of the elements, each text once, with the first element that shows it.
    static std::vector<ReferenceSource> referenceSources(const std::vector<Element>& elements);
};

}  // namespace velmora
