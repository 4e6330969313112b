// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>

#include "Velmora/Platform/AccessibilitySystem.h"
#include "Velmora/Platform/Recorded/Recording.h"

namespace velmora {

/// The elements of a recording, at the points where they were asked for.
class RecordedAccessibility final : public AccessibilitySystem {
  public:
    explicit RecordedAccessibility(std::shared_ptr<const Recording> recording)
        : recording_(std::move(recording)) {}

    AccessibilityElement::Pointer elementAtPosition(Point point) override;
    AccessibilityElement::Pointer focusedElement() override;

  private:
    AccessibilityElement::Pointer element(const std::optional<Recording::ElementIndex>& index);

    std::shared_ptr<const Recording> recording_;
};

}  // namespace velmora
