// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstddef>
#include <map>
#include <memory>
#include <utility>

#include "Velmora/Platform/Clock.h"

namespace velmora {

/// A clock that stands still until it is moved. Timers fire while it moves, in the order of their
/// times, each seeing its own time. Timers may outlive the clock.
class ManualClock final : public Clock {
  public:
    explicit ManualClock(double uptime = 1000, double wallTime = 1'700'000'000);

    double uptime() const override { return uptime_; }
    double wallTime() const override { return wallTimeAtStart_ + (uptime_ - uptimeAtStart_); }
    std::unique_ptr<OneShotTimer> schedule(double seconds, std::function<void()> action) override;

    /// Moves time on by this much.
    void advance(double seconds);

    /// Timers that are waiting.
    std::size_t pendingTimers() const { return timers_->size(); }

  private:
    // By time, then by order of scheduling.
    using Key = std::pair<double, unsigned long long>;
    using Timers = std::map<Key, std::function<void()>>;
    class Timer;

    std::atomic<double> uptime_;
    const double uptimeAtStart_;
    const double wallTimeAtStart_;
    unsigned long long scheduled_ = 0;
    std::shared_ptr<Timers> timers_ = std::make_shared<Timers>();
};

}  // namespace velmora
