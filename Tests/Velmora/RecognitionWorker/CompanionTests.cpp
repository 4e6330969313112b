// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/Worker/Companion.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <mutex>
#include <vector>

namespace velmora {
namespace {

using Lane = Companion::Lane;

constexpr std::chrono::seconds longEnough{60};

TEST(Companion, DoesItsTasksInOrder) {
    Companion companion(true);
    std::vector<int> done;
    for (int i = 0; i < 20; ++i) {
        companion.begin([&done, i] { done.push_back(i); });
    }
    ASSERT_TRUE(companion.awaitRest(longEnough));
    ASSERT_EQ(done.size(), 20U);
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(done[static_cast<std::size_t>(i)], i);
    }
}

TEST(Companion, SharedWorkIsDoneOnceAndIsOverAfterwards) {
    Companion companion(true);
    for (int round = 0; round < 300; ++round) {
        std::vector<int> times(static_cast<std::size_t>(round % 7), 0);
        companion.share(times.size(), [&](Lane, std::size_t at) { ++times[at]; });
        for (const int count : times) {
            EXPECT_EQ(count, 1);
        }
    }
}

TEST(Companion, TakesItsShare) {
    Companion companion(true);
    std::promise<void> helped;
    auto help = helped.get_future();
    std::once_flag once;
    // Whoever calls waits for the other one to have come.
    companion.share(2, [&](Lane lane, std::size_t) {
        if (lane == Lane::companion) {
            std::call_once(once, [&] { helped.set_value(); });
        } else {
            help.wait();
        }
    });
    EXPECT_EQ(help.wait_for(std::chrono::seconds(0)), std::future_status::ready);
}

TEST(Companion, IsNotWaitedForWhereItHasOtherThingsToDo) {
    Companion companion(true);
    std::promise<void> release;
    companion.begin([released = release.get_future().share()] { released.wait(); });
    std::vector<Lane> lanes;
    companion.share(5, [&](Lane lane, std::size_t) { lanes.push_back(lane); });
    EXPECT_EQ(lanes, std::vector<Lane>(5, Lane::own));
    EXPECT_FALSE(companion.awaitRest(std::chrono::seconds(0)));
    release.set_value();
    EXPECT_TRUE(companion.awaitRest(longEnough));
}

TEST(Companion, WithoutAThreadTheCallerDoesItAll) {
    Companion companion(false);
    EXPECT_FALSE(companion.isThere());
    std::size_t sum = 0;
    companion.share(4, [&](Lane lane, std::size_t at) {
        EXPECT_EQ(lane, Lane::own);
        sum += at;
    });
    EXPECT_EQ(sum, 6U);
    EXPECT_TRUE(companion.awaitRest(std::chrono::seconds(0)));
}

TEST(Companion, EndsWithTasksLeft) {
    std::atomic<int> done{0};
    {
        Companion companion(true);
        for (int i = 0; i < 50; ++i) {
            companion.begin([&done] { ++done; });
        }
    }
    EXPECT_LE(done.load(), 50);
}

}  // namespace
}  // namespace velmora
