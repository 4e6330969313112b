// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>

#include "Velmora/Platform/AccessibilitySystem.h"
#include "Velmora/Platform/Recorded/Recorder.h"
#include "Velmora/Platform/Recorded/RecordingElement.h"

namespace velmora {

/// An accessibility system whose elements are recorded.
class RecordingAccessibility final : public AccessibilitySystem {
  public:
    RecordingAccessibility(std::shared_ptr<AccessibilitySystem> system,
                           std::shared_ptr<Recorder> recorder)
        : system_(std::move(system)), recorder_(std::move(recorder)) {}

    AccessibilityElement::Pointer elementAtPosition(Point point) override {
        const auto element = system_->elementAtPosition(point);
        const auto index = recorder_->number(element);
        recorder_->change(
            [&](Recording& recording) { recorder_->add(recording.hits, point, index); });
        return RecordingElement::around(element, recorder_);
    }

    AccessibilityElement::Pointer focusedElement() override {
        const auto element = system_->focusedElement();
        const auto index = recorder_->number(element);
        recorder_->change([&](Recording& recording) { recording.focused = index; });
        return RecordingElement::around(element, recorder_);
    }

  private:
    std::shared_ptr<AccessibilitySystem> system_;
    std::shared_ptr<Recorder> recorder_;
};

}  // namespace velmora
