// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Coordination/StatusBarPresenting.h"
#include "Velmora/Platform/Unavailable/Unavailability.h"

namespace velmora {

/// No tray.
class UnavailableStatusBar final : public StatusBarPresenting, public Unavailability {
  public:
    using Unavailability::Unavailability;

    void attach(AppModel& /*model*/) override {}
};

}  // namespace velmora
