// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "Velmora/Platform/AccessibilityElement.h"

namespace velmora {

/// A whole window of a program that shows no elements of its own: a place on the screen, nothing to
/// read. Its title is left out: taken for a text in the window, it would replace what is really
/// there.
class AtSpiWindowElement : public AccessibilityElement {
  public:
    AtSpiWindowElement(std::uint64_t window, Rect capture) : window_(window), capture_(capture) {}

    Pointer parent() const override { return nullptr; }
    std::optional<std::string> selectedText() const override { return std::nullopt; }
    std::optional<Utf16Range> selectedTextRange() const override { return std::nullopt; }
    std::optional<std::string> value() const override { return std::nullopt; }
    std::optional<std::string> title() const override { return std::nullopt; }
    std::optional<Point> position() const override { return Point{capture_.x, capture_.y}; }
    std::optional<Size> size() const override { return capture_.size(); }
    std::optional<std::int64_t> longValueLength() const override { return std::nullopt; }
    std::optional<Utf16Range> rangeForPosition(Point) const override { return std::nullopt; }
    std::optional<std::string> stringForRange(Utf16Range) const override { return std::nullopt; }
    std::optional<Rect> boundsForRange(Utf16Range) const override { return std::nullopt; }

    bool equals(const AccessibilityElement& other) const override {
        const auto* element = dynamic_cast<const AtSpiWindowElement*>(&other);
        return element != nullptr && element->window_ == window_;
    }

  private:
    std::uint64_t window_;
    Rect capture_;
};

}  // namespace velmora
