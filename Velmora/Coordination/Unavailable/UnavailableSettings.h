// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Coordination/SettingsPresenting.h"
#include "Velmora/Platform/Unavailable/Unavailability.h"

namespace velmora {

/// No settings window.
class UnavailableSettings final : public SettingsPresenting, public Unavailability {
  public:
    using Unavailability::Unavailability;

    void showSettings() override {}
};

}  // namespace velmora
