// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Velmora/Platform/AccessibilityElement.h"

namespace velmora {

/// An element whose answers are set by the test. Reads are counted where a test wants to know.
class FakeElement final : public AccessibilityElement {
  public:
    static std::shared_ptr<FakeElement> make() { return std::make_shared<FakeElement>(); }

    /// An element whose value is one line of cells of equal size that stand side by side, and that
    /// answers every parameterised read truthfully.
    static std::shared_ptr<FakeElement> line(const std::string& text, Point origin, Size cell);

    Pointer parent() const override { return parentElement; }
    std::optional<std::string> selectedText() const override { return selection; }
    std::optional<Utf16Range> selectedTextRange() const override { return selectionRange; }
    std::optional<std::string> value() const override {
        ++valueReads;
        return valueText;
    }
    std::optional<std::string> title() const override { return titleText; }
    std::optional<Point> position() const override { return origin; }
    std::optional<Size> size() const override { return extent; }
    std::optional<std::int64_t> longValueLength() const override { return longLength; }
    std::optional<Utf16Range> rangeForPosition(Point point) const override;
    std::optional<std::string> stringForRange(Utf16Range range) const override;
    std::optional<Rect> boundsForRange(Utf16Range range) const override;

    /// The same object, or one with the same identity where that is not 0.
    bool equals(const AccessibilityElement& other) const override;

    Pointer parentElement;
    std::optional<std::string> selection;
    std::optional<Utf16Range> selectionRange;
    std::optional<std::string> valueText;
    std::optional<std::string> titleText;
    std::optional<Point> origin;
    std::optional<Size> extent;
    std::optional<std::int64_t> longLength;
    int identity = 0;

    std::function<std::optional<Utf16Range>(Point)> onRangeForPosition;
    std::function<std::optional<std::string>(Utf16Range)> onStringForRange;
    std::function<std::optional<Rect>(Utf16Range)> onBoundsForRange;

    mutable int valueReads = 0;
    mutable std::vector<Utf16Range> boundsRead;   ///< The ranges asked for, in order.
    mutable std::vector<Utf16Range> stringsRead;  ///< The ranges asked for, in order.
};

}  // namespace velmora
