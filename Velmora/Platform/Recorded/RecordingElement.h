// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>

#include "Velmora/Platform/AccessibilityElement.h"
#include "Velmora/Platform/Recorded/Recorder.h"

namespace velmora {

/// An element whose every read is recorded.
class RecordingElement final : public AccessibilityElement {
  public:
    /// The element itself, recording; null for null, the bare element beyond the recorder's limit.
    static Pointer around(const Pointer& element, const std::shared_ptr<Recorder>& recorder);

    RecordingElement(Pointer element, Recorder::ElementIndex index,
                     std::shared_ptr<Recorder> recorder)
        : element_(std::move(element)), index_(index), recorder_(std::move(recorder)) {}

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
    /// Keeps an answer in a field of the recorded element and hands it on.
    template <typename Answer>
    std::optional<Answer> keep(Recording::Read<Answer> Recording::Element::*field,
                               std::optional<Answer> answer) const;

    Pointer element_;
    Recorder::ElementIndex index_;
    std::shared_ptr<Recorder> recorder_;
};

}  // namespace velmora
