// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recorded/RecordedAccessibility.h"

#include "Velmora/Platform/Recorded/RecordedAnswers.h"
#include "Velmora/Platform/Recorded/RecordedElement.h"

namespace velmora {

AccessibilityElement::Pointer RecordedAccessibility::elementAtPosition(Point point) {
    return element(recordedAnswer(recording_->hits, point));
}

AccessibilityElement::Pointer RecordedAccessibility::focusedElement() {
    return element(recording_->focused.value_or(std::nullopt));
}

AccessibilityElement::Pointer RecordedAccessibility::element(
    const std::optional<Recording::ElementIndex>& index) {
    return index ? std::make_shared<RecordedElement>(recording_, *index) : nullptr;
}

}  // namespace velmora
