// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace velmora {

/// A pending one-shot timer; destroying it cancels it.
class OneShotTimer {
  public:
    virtual ~OneShotTimer() = default;
};

/// Time, and work to be done later on the main thread. `uptime` may be read from any thread, the
/// rest is for the main thread.
class Clock {
  public:
    virtual ~Clock() = default;

    /// Seconds since the machine started, sleep included; unaffected by changes of the wall clock.
    virtual double uptime() const = 0;

    /// Seconds since 1970-01-01 UTC, with fractions.
    virtual double wallTime() const = 0;

    /// Calls `action` once on the main thread after this many seconds unless the timer is
    /// destroyed.
    virtual std::unique_ptr<OneShotTimer> schedule(double seconds,
                                                   std::function<void()> action) = 0;
};

}  // namespace velmora
