// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/ElementReading.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace velmora {

namespace {

bool isTooLong(std::string_view text) {
    if (text.size() <= ElementReading::longestText) {
        return false;
    }
    constexpr std::size_t longestCodePoint = 4;
    if (text.size() > ElementReading::longestText * longestCodePoint) {
        return true;
    }
    const auto codePoints = std::count_if(text.begin(), text.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
    });
    return static_cast<std::size_t>(codePoints) > ElementReading::longestText;
}

bool holds(const std::vector<ElementReading::Element>& list, const AccessibilityElement& element) {
    return std::any_of(list.begin(), list.end(),
                       [&](const auto& other) { return other->equals(element); });
}

}  // namespace

std::vector<ElementReading::Element> ElementReading::candidateElements(const Element& start) {
    std::vector<Element> chain;
    for (Element element = start; element != nullptr; element = element->parent()) {
        chain.push_back(element);
        if (chain.size() > maximumAncestors) {
            break;
        }
    }
    return chain;
}

std::vector<ElementReading::Element> ElementReading::focusedElements(AccessibilitySystem& system) {
    Element focused = system.focusedElement();
    if (focused == nullptr) {
        return {};
    }
    return {std::move(focused)};
}

std::vector<ElementReading::Element> ElementReading::selectedTextCandidates(
    const std::vector<Element>& base, AccessibilitySystem& system) {
    std::vector<Element> list = base;
    for (const Element& focused : focusedElements(system)) {
        for (Element& element : candidateElements(focused)) {
            if (!holds(list, *element)) {
                list.push_back(std::move(element));
            }
        }
    }
    return list;
}

std::optional<std::string> ElementReading::copySelectedText(const AccessibilityElement& element) {
    std::optional<std::string> text = element.selectedText();
    if (!text || text->empty() || text->size() > longestSelection) {
        return std::nullopt;
    }
    return text;
}

std::optional<Utf16Range> ElementReading::copySelectedTextRange(
    const AccessibilityElement& element) {
    const std::optional<Utf16Range> range = element.selectedTextRange();
    if (!range || range->location == -1 || range->length < 1) {
        return std::nullopt;
    }
    return range;
}

std::optional<std::string> ElementReading::copyText(const AccessibilityElement& element) {
    std::optional<std::string> value = element.value();
    if (value && !value->empty()) {
        return isTooLong(*value) ? std::nullopt : std::move(value);
    }
    if (element.longValueLength()) {
        return std::nullopt;
    }
    std::optional<std::string> title = element.title();
    if (!title || title->empty() || isTooLong(*title)) {
        return std::nullopt;
    }
    return title;
}

std::optional<Rect> ElementReading::boundsForRange(Utf16Range range,
                                                   const AccessibilityElement& element) {
    const std::optional<Rect> bounds = element.boundsForRange(range);
    if (!bounds || !bounds->isFinite()) {
        return std::nullopt;
    }
    return bounds;
}

std::optional<Rect> ElementReading::boundsForElement(const AccessibilityElement& element) {
    const std::optional<Point> position = element.position();
    if (!position) {
        return std::nullopt;
    }
    const std::optional<Size> size = element.size();
    if (!size) {
        return std::nullopt;
    }
    const Rect bounds{position->x, position->y, size->width, size->height};
    if (!bounds.isFinite() || bounds.isEmpty()) {
        return std::nullopt;
    }
    return bounds;
}

std::vector<ReferenceSource> ElementReading::referenceSources(
    const std::vector<Element>& elements) {
    std::vector<ReferenceSource> sources;
    for (const Element& element : elements) {
        std::optional<std::string> text = copyText(*element);
        if (!text) {
            continue;
        }
        const bool known = std::any_of(sources.begin(), sources.end(),
                                       [&](const auto& source) { return source.text == *text; });
        if (!known) {
            sources.push_back({element, std::move(*text)});
        }
    }
    return sources;
}

}  // namespace velmora
