// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/Clock.h"

namespace velmora {

/// The machine's clocks, and precise timers of the main thread's event loop.
class SystemClock final : public Clock {
  public:
    double uptime() const override;
    double wallTime() const override;
    std::unique_ptr<OneShotTimer> schedule(double seconds, std::function<void()> action) override;
};

}  // namespace velmora
