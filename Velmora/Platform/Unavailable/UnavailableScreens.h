// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/Screens.h"
#include "Velmora/Platform/Unavailable/Unavailability.h"

namespace velmora {

/// No screens.
class UnavailableScreens final : public Screens, public Unavailability {
  public:
    using Unavailability::Unavailability;

    std::vector<Screen> all() const override { return {}; }
};

}  // namespace velmora
