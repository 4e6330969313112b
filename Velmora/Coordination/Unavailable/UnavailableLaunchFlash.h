// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Coordination/LaunchFlashPresenting.h"
#include "Velmora/Platform/Unavailable/Unavailability.h"

namespace velmora {

/// No notice at the start.
class UnavailableLaunchFlash final : public LaunchFlashPresenting, public Unavailability {
  public:
    using Unavailability::Unavailability;

    void flash() override {}
};

}  // namespace velmora
