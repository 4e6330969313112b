// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/SystemClock.h"

#include <time.h>

#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace velmora {

namespace {

double secondsOf(clockid_t clock) {
    timespec now{};
    ::clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

class EventLoopTimer final : public OneShotTimer {
  public:
    EventLoopTimer(std::chrono::milliseconds delay, std::function<void()> action)
        : timer_(new QTimer) {
        timer_->setSingleShot(true);
        // The coarse default may be late by a twentieth, which a hand notices.
        timer_->setTimerType(Qt::PreciseTimer);
        QObject::connect(timer_, &QTimer::timeout, timer_, [call = std::move(action)] {
            // The action may well destroy its own timer.
            const auto copy = call;
            copy();
        });
        timer_->start(delay);
    }
    EventLoopTimer(const EventLoopTimer&) = delete;
    EventLoopTimer& operator=(const EventLoopTimer&) = delete;
    ~EventLoopTimer() override { delete timer_; }

  private:
    QTimer* timer_;
};

}  // namespace

double SystemClock::uptime() const {
    return secondsOf(CLOCK_BOOTTIME);
}

double SystemClock::wallTime() const {
    return secondsOf(CLOCK_REALTIME);
}

std::unique_ptr<OneShotTimer> SystemClock::schedule(double seconds, std::function<void()> action) {
    constexpr double longest = 86'400'000;  // One day; nothing here waits as long.
    const double wanted = std::isfinite(seconds) ? seconds * 1000 : 0;
    const std::chrono::milliseconds delay(std::lround(std::clamp(wanted, 0.0, longest)));
    return std::make_unique<EventLoopTimer>(delay, std::move(action));
}

}  // namespace velmora
