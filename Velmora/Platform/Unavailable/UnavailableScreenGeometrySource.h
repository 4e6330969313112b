// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/ScreenGeometrySource.h"
#include "Velmora/Platform/Unavailable/Unavailability.h"

namespace velmora {

/// No screens.
class UnavailableScreenGeometrySource final : public ScreenGeometrySource, public Unavailability {
  public:
    using Unavailability::Unavailability;

    ScreenGeometry current() const override { return {}; }
};

}  // namespace velmora
