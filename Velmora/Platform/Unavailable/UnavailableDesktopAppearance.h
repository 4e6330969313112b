// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/DesktopAppearance.h"
#include "Velmora/Platform/Unavailable/Unavailability.h"

namespace velmora {

/// No preference.
class UnavailableDesktopAppearance final : public DesktopAppearance, public Unavailability {
  public:
    using Unavailability::Unavailability;

    std::optional<ColorScheme> colorScheme() const override { return std::nullopt; }
    void observe(Observer /*observer*/) override {}
};

}  // namespace velmora
