// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/Utf16Range.h"

namespace velmora {

/// One element of another program's interface, as the accessibility service shows it. Every read
/// may fail at any time (the program may be slow, gone, or lie about its types) and then answers
/// nothing; every answer is bounded in size and time by the backend. Points and rectangles are in
/// capture space (origin at the top left corner of the primary screen, y downwards, in points).
/// Texts are valid UTF-8; offsets count UTF-16 units of the element's value.
///
/// Elements are shared and immutable; reads happen on the extraction queue, except that
/// `boundsForRange` may also be called on the main thread, where it waits 20 ms at most.
class AccessibilityElement {
  public:
    using Pointer = std::shared_ptr<const AccessibilityElement>;

    virtual ~AccessibilityElement() = default;

    // Plain attributes.
    virtual Pointer parent() const = 0;  ///< Null where there is none.
    virtual std::optional<std::string> selectedText() const = 0;
    virtual std::optional<Utf16Range> selectedTextRange() const = 0;
    virtual std::optional<std::string> value() const = 0;  ///< Nothing above 20,000 characters.
    virtual std::optional<std::string> title() const = 0;
    virtual std::optional<Point> position() const = 0;  ///< The top left corner.
    virtual std::optional<Size> size() const = 0;

    /// The length of the value in UTF-16 units where `value` is too long to be read whole;
    /// otherwise nothing, because the value itself tells.
    virtual std::optional<std::int64_t> longValueLength() const = 0;

    // Parameterised attributes.
    virtual std::optional<Utf16Range> rangeForPosition(Point point) const = 0;
    virtual std::optional<std::string> stringForRange(Utf16Range range) const = 0;
    virtual std::optional<Rect> boundsForRange(Utf16Range range) const = 0;

    /// Whether both stand for the same element of the same program.
    virtual bool equals(const AccessibilityElement& other) const = 0;
};

}  // namespace velmora
