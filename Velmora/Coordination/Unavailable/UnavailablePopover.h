// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Coordination/PopoverPresenting.h"
#include "Velmora/Platform/Unavailable/Unavailability.h"

namespace velmora {

/// No panel.
class UnavailablePopover final : public PopoverPresenting, public Unavailability {
  public:
    using Unavailability::Unavailability;

    void showPinyin(const std::string& /*pinyin*/, const Rect& /*anchor*/,
                    double /*fontScale*/) override {}
    void show(const std::vector<LookupResult>& /*results*/,
              const std::optional<std::string>& /*selectedText*/, const Rect& /*anchor*/,
              bool /*toneColorsEnabled*/, double /*fontScale*/) override {}
    std::optional<Rect> visiblePanelFrame() const override { return std::nullopt; }
    void orderOut() override {}
};

}  // namespace velmora
