// SPDX-License-Identifier: MIT
// What every clock promises. Nothing here depends on how fast the machine is.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "Tests/Support/EventLoop.h"
#include "Velmora/Platform/Linux/SystemClock.h"
#include "Velmora/Platform/Recorded/ManualClock.h"

namespace velmora {
namespace {

struct OfTheSystem {
    SystemClock clock;
    bool runUntil(const std::function<bool()>& condition) { return testing::waitUntil(condition); }
};

struct ByHand {
    ManualClock clock;
    bool runUntil(const std::function<bool()>& condition) {
        for (int step = 0; step < 1000 && !condition(); ++step) {
            clock.advance(0.01);
        }
        return condition();
    }
};

template <typename Backend>
class ClockContract : public ::testing::Test {
  protected:
    void SetUp() override { testing::coreApplication(); }
    Backend backend;
};

using Backends = ::testing::Types<OfTheSystem, ByHand>;
TYPED_TEST_SUITE(ClockContract, Backends);

TYPED_TEST(ClockContract, TellsFiniteTimesThatNeverRunBack) {
    const double before = this->backend.clock.uptime();
    EXPECT_GT(before, 0);
    EXPECT_GT(this->backend.clock.wallTime(), 1'600'000'000);
    EXPECT_GE(this->backend.clock.uptime(), before);
}

TYPED_TEST(ClockContract, CallsOnceAndNotEarly) {
    const double start = this->backend.clock.uptime();
    double firedAt = 0;
    int calls = 0;
    bool later = false;
    const auto timer = this->backend.clock.schedule(0.05, [&] {
        ++calls;
        firedAt = this->backend.clock.uptime();
    });
    const auto second = this->backend.clock.schedule(0.2, [&] { later = true; });
    EXPECT_EQ(calls, 0);
    ASSERT_TRUE(this->backend.runUntil([&] { return later; }));
    EXPECT_EQ(calls, 1);
    // Event loops count in milliseconds.
    EXPECT_GE(firedAt - start, 0.049);
}

TYPED_TEST(ClockContract, NeverCallsBeforeScheduleReturns) {
    bool fired = false;
    const auto timer = this->backend.clock.schedule(0, [&] { fired = true; });
    EXPECT_FALSE(fired);
    EXPECT_TRUE(this->backend.runUntil([&] { return fired; }));
}

TYPED_TEST(ClockContract, DestroyingCancels) {
    bool cancelled = true;
    bool later = false;
    auto timer = this->backend.clock.schedule(0.01, [&] { cancelled = false; });
    const auto second = this->backend.clock.schedule(0.05, [&] { later = true; });
    timer.reset();
    ASSERT_TRUE(this->backend.runUntil([&] { return later; }));
    EXPECT_TRUE(cancelled);
}

TYPED_TEST(ClockContract, ATimerMayDestroyItselfAndScheduleAnother) {
    std::unique_ptr<OneShotTimer> timer;
    int calls = 0;
    timer = this->backend.clock.schedule(0.01, [&] {
        ++calls;
        timer.reset();
        timer = this->backend.clock.schedule(0.01, [&] { ++calls; });
    });
    EXPECT_TRUE(this->backend.runUntil([&] { return calls == 2; }));
}

TYPED_TEST(ClockContract, FiresInTheOrderOfTimes) {
    std::vector<int> order;
    const auto late = this->backend.clock.schedule(0.06, [&] { order.push_back(2); });
    const auto early = this->backend.clock.schedule(0.01, [&] { order.push_back(1); });
    ASSERT_TRUE(this->backend.runUntil([&] { return order.size() == 2; }));
    EXPECT_EQ(order, (std::vector{1, 2}));
}

TYPED_TEST(ClockContract, ANegativeDelayFiresAtOnce) {
    bool fired = false;
    const auto timer = this->backend.clock.schedule(-5, [&] { fired = true; });
    EXPECT_TRUE(this->backend.runUntil([&] { return fired; }));
}

}  // namespace
}  // namespace velmora
