// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recorded/ManualClock.h"

#include <algorithm>

namespace velmora {

class ManualClock::Timer final : public OneShotTimer {
  public:
    Timer(std::weak_ptr<Timers> timers, Key key) : timers_(std::move(timers)), key_(key) {}
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    ~Timer() override {
        if (const auto timers = timers_.lock()) {
            timers->erase(key_);
        }
    }

  private:
    std::weak_ptr<Timers> timers_;
    Key key_;
};

ManualClock::ManualClock(double uptime, double wallTime)
    : uptime_(uptime), uptimeAtStart_(uptime), wallTimeAtStart_(wallTime) {}

std::unique_ptr<OneShotTimer> ManualClock::schedule(double seconds, std::function<void()> action) {
    const Key key{uptime_ + std::max(0.0, seconds), ++scheduled_};
    timers_->emplace(key, std::move(action));
    return std::make_unique<Timer>(timers_, key);
}

void ManualClock::advance(double seconds) {
    // The tolerance lets ten steps of 0.1 s reach a timer of 1 s.
    constexpr double tolerance = 1e-9;
    const double target = uptime_ + seconds;
    while (!timers_->empty() && timers_->begin()->first.first <= target + tolerance) {
        const auto first = timers_->begin();
        uptime_ = std::max(uptime_.load(), first->first.first);
        const std::function<void()> action = std::move(first->second);
        timers_->erase(first);
        action();
    }
    uptime_ = std::max(uptime_.load(), target);
}

}  // namespace velmora
