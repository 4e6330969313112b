// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recorded/RecordingElement.h"

#include <cmath>

namespace velmora {

AccessibilityElement::Pointer RecordingElement::around(const Pointer& element,
                                                       const std::shared_ptr<Recorder>& recorder) {
    const auto index = recorder->number(element);
    return index ? std::make_shared<RecordingElement>(element, *index, recorder) : element;
}

template <typename Answer>
std::optional<Answer> RecordingElement::keep(Recording::Read<Answer> Recording::Element::*field,
                                             std::optional<Answer> answer) const {
    recorder_->element(index_, [&](Recording::Element& element) { element.*field = answer; });
    return answer;
}

AccessibilityElement::Pointer RecordingElement::parent() const {
    const Pointer parent = element_->parent();
    keep(&Recording::Element::parent, recorder_->number(parent));
    return around(parent, recorder_);
}

std::optional<std::string> RecordingElement::selectedText() const {
    auto text = element_->selectedText();
    keep(&Recording::Element::selectedText, recorder_->kept(text));
    return text;
}

std::optional<Utf16Range> RecordingElement::selectedTextRange() const {
    return keep(&Recording::Element::selectedTextRange, element_->selectedTextRange());
}

std::optional<std::string> RecordingElement::value() const {
    auto text = element_->value();
    keep(&Recording::Element::value, recorder_->kept(text));
    return text;
}

std::optional<std::string> RecordingElement::title() const {
    auto text = element_->title();
    keep(&Recording::Element::title, recorder_->kept(text));
    return text;
}

std::optional<Point> RecordingElement::position() const {
    const auto position = element_->position();
    const bool finite = position && std::isfinite(position->x) && std::isfinite(position->y);
    keep(&Recording::Element::position, finite ? position : std::nullopt);
    return position;
}

std::optional<Size> RecordingElement::size() const {
    const auto size = element_->size();
    const bool finite = size && std::isfinite(size->width) && std::isfinite(size->height);
    keep(&Recording::Element::size, finite ? size : std::nullopt);
    return size;
}

std::optional<std::int64_t> RecordingElement::longValueLength() const {
    return keep(&Recording::Element::longValueLength, element_->longValueLength());
}

std::optional<Utf16Range> RecordingElement::rangeForPosition(Point point) const {
    const auto answer = element_->rangeForPosition(point);
    recorder_->element(index_, [&](Recording::Element& element) {
        recorder_->add(element.rangeForPosition, point, answer);
    });
    return answer;
}

std::optional<std::string> RecordingElement::stringForRange(Utf16Range range) const {
    auto answer = element_->stringForRange(range);
    const auto kept = recorder_->kept(answer);
    recorder_->element(index_, [&](Recording::Element& element) {
        recorder_->add(element.stringForRange, range, kept);
    });
    return answer;
}

std::optional<Rect> RecordingElement::boundsForRange(Utf16Range range) const {
    const auto answer = element_->boundsForRange(range);
    recorder_->element(index_, [&](Recording::Element& element) {
        recorder_->add(element.boundsForRange, range, answer);
    });
    return answer;
}

bool RecordingElement::equals(const AccessibilityElement& other) const {
    const auto* element = dynamic_cast<const RecordingElement*>(&other);
    return element_->equals(element != nullptr ? *element->element_ : other);
}

}  // namespace velmora
