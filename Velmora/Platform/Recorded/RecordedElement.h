// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>

#include "Velmora/Platform/AccessibilityElement.h"
#include "Velmora/Platform/Recorded/Recording.h"

namespace velmora {

/// An element of a recording. Questions that were not put when it was made have no answer.
class RecordedElement final : public AccessibilityElement {
  public:
    /// The index must be one of the recording's elements.
    RecordedElement(std::shared_ptr<const Recording> recording, Recording::ElementIndex index)
        : recording_(std::move(recording)), index_(index) {}

    Pointer parent() const override;
    std::optional<std::string> selectedText() const override;
    std::optional<Utf16Range> selectedTextRange() const override;
    std::optional<std::string> value() const override;
    std::optional<std::string> title() const override;
    std::optional<Point> position() const override;
    std::optional<Size> size() const override;
    std::optional<std::int64_t> longValueLength() const override;
    std::optional<Utf16Range> rangeForPosition(Point point) const override;
    std::optional<std::string> stringForRange(Utf16Range range) const override;
    std::optional<Rect> boundsForRange(Utf16Range range) const override;
    bool equals(const AccessibilityElement& other) const override;

  private:
    const Recording::Element& data() const { return recording_->elements[index_]; }

    std::shared_ptr<const Recording> recording_;
    Recording::ElementIndex index_;
};

}  // namespace velmora
