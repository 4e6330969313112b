// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recorded/RecordedElement.h"

#include "Velmora/Platform/Recorded/RecordedAnswers.h"

namespace velmora {

AccessibilityElement::Pointer RecordedElement::parent() const {
    const auto index = data().parent.value_or(std::nullopt);
    return index ? std::make_shared<RecordedElement>(recording_, *index) : nullptr;
}

std::optional<std::string> RecordedElement::selectedText() const {
    return data().selectedText.value_or(std::nullopt);
}

std::optional<Utf16Range> RecordedElement::selectedTextRange() const {
    return data().selectedTextRange.value_or(std::nullopt);
}

std::optional<std::string> RecordedElement::value() const {
    return data().value.value_or(std::nullopt);
}

std::optional<std::string> RecordedElement::title() const {
    return data().title.value_or(std::nullopt);
}

std::optional<Point> RecordedElement::position() const {
    return data().position.value_or(std::nullopt);
}

std::optional<Size> RecordedElement::size() const {
    return data().size.value_or(std::nullopt);
}

std::optional<std::int64_t> RecordedElement::longValueLength() const {
    return data().longValueLength.value_or(std::nullopt);
}

std::optional<Utf16Range> RecordedElement::rangeForPosition(Point point) const {
    return recordedAnswer(data().rangeForPosition, point);
}

std::optional<std::string> RecordedElement::stringForRange(Utf16Range range) const {
    return recordedAnswer(data().stringForRange, range);
}

std::optional<Rect> RecordedElement::boundsForRange(Utf16Range range) const {
    return recordedAnswer(data().boundsForRange, range);
}

bool RecordedElement::equals(const AccessibilityElement& other) const {
    const auto* element = dynamic_cast<const RecordedElement*>(&other);
    return element != nullptr && element->recording_ == recording_ && element->index_ == index_;
}

}  // namespace velmora
