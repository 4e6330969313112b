// SPDX-License-Identifier: MIT
#include "Tests/Support/TextCapture/FakeElement.h"

#include "VelmoraCore/CharacterText.h"

namespace velmora {

std::shared_ptr<FakeElement> FakeElement::line(const std::string& text, Point origin, Size cell) {
    auto element = make();
    const auto length = static_cast<std::int64_t>(utf16Length(text));
    const Rect whole{origin.x, origin.y, cell.width * static_cast<double>(length), cell.height};
    element->valueText = text;
    element->origin = origin;
    element->extent = whole.size();
    element->onRangeForPosition = [=](Point point) -> std::optional<Utf16Range> {
        if (!whole.contains(point)) {
            return std::nullopt;
        }
        return Utf16Range{static_cast<std::int64_t>((point.x - origin.x) / cell.width), 1};
    };
    element->onStringForRange = [text](Utf16Range range) -> std::optional<std::string> {
        return utf16Substring(text, static_cast<std::size_t>(range.location),
                              static_cast<std::size_t>(range.length));
    };
    element->onBoundsForRange = [=](Utf16Range range) -> std::optional<Rect> {
        if (range.location < 0 || range.location + range.length > length) {
            return std::nullopt;
        }
        return Rect{origin.x + cell.width * static_cast<double>(range.location), origin.y,
                    cell.width * static_cast<double>(range.length), cell.height};
    };
    return element;
}

std::optional<Utf16Range> FakeElement::rangeForPosition(Point point) const {
    return onRangeForPosition ? onRangeForPosition(point) : std::nullopt;
}

std::optional<std::string> FakeElement::stringForRange(Utf16Range range) const {
    stringsRead.push_back(range);
    return onStringForRange ? onStringForRange(range) : std::nullopt;
}

std::optional<Rect> FakeElement::boundsForRange(Utf16Range range) const {
    boundsRead.push_back(range);
    return onBoundsForRange ? onBoundsForRange(range) : std::nullopt;
}

bool FakeElement::equals(const AccessibilityElement& other) const {
    const auto* element = dynamic_cast<const FakeElement*>(&other);
    return element == this ||
           (element != nullptr && identity != 0 && element->identity == identity);
}

}  // namespace velmora
