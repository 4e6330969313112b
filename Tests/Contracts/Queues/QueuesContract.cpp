// SPDX-License-Identifier: MIT
// What the queues promise: order, one at a time, and the right thread.
#include <gtest/gtest.h>
#include <pthread.h>

#include <array>
#include <atomic>
#include <future>
#include <stdexcept>
#include <thread>
#include <vector>

#include "Tests/Support/EventLoop.h"
#include "Velmora/Platform/Linux/EventLoopMainQueue.h"
#include "Velmora/Platform/Linux/SerialWorkerQueue.h"
#include "Velmora/Platform/Recorded/ManualMainQueue.h"

namespace velmora {
namespace {

struct OfTheEventLoop {
    OfTheEventLoop() { testing::coreApplication(); }
    EventLoopMainQueue queue;
    bool runUntil(const std::function<bool()>& condition) { return testing::waitUntil(condition); }
};

struct ByHand {
    ManualMainQueue queue;
    bool runUntil(const std::function<bool()>& condition) {
        while (!condition()) {
            queue.runAll();
            std::this_thread::yield();
        }
        return true;
    }
};

template <typename Backend>
class MainQueueContract : public ::testing::Test {
  protected:
    void SetUp() override { testing::coreApplication(); }
    Backend backend;
};

using Backends = ::testing::Types<OfTheEventLoop, ByHand>;
TYPED_TEST_SUITE(MainQueueContract, Backends);

TYPED_TEST(MainQueueContract, RunsInOrderAndLater) {
    std::vector<int> order;
    for (int i = 0; i < 5; ++i) {
        this->backend.queue.post([&order, i] { order.push_back(i); });
    }
    EXPECT_TRUE(order.empty());
    ASSERT_TRUE(this->backend.runUntil([&] { return order.size() == 5; }));
    EXPECT_EQ(order, (std::vector{0, 1, 2, 3, 4}));
}

TYPED_TEST(MainQueueContract, RunsOnTheMainThreadWhatOthersHandOver) {
    std::thread::id ranOn;
    std::thread([&] {
        this->backend.queue.post([&] { ranOn = std::this_thread::get_id(); });
    }).join();
    ASSERT_TRUE(this->backend.runUntil([&] { return ranOn != std::thread::id(); }));
    EXPECT_EQ(ranOn, std::this_thread::get_id());
}

TYPED_TEST(MainQueueContract, WorkMayHandOverMore) {
    bool done = false;
    this->backend.queue.post([&] { this->backend.queue.post([&] { done = true; }); });
    EXPECT_TRUE(this->backend.runUntil([&] { return done; }));
}

TEST(EventLoopMainQueue, TakesWorkFromManyThreads) {
    testing::coreApplication();
    EventLoopMainQueue queue;
    std::vector<int> sums(4);
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < sums.size(); ++t) {
        threads.emplace_back([&, t] {
            for (int i = 1; i <= 250; ++i) {
                // Each thread's pieces keep their order among those of the others.
                queue.post([&sums, t, i] { sums[t] = sums[t] == i - 1 ? i : -1; });
            }
        });
    }
    EXPECT_TRUE(testing::waitUntil([&] { return sums == std::vector<int>(4, 250); }));
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(EventLoopMainQueue, DropsWhatWaitsWhenItGoes) {
    testing::coreApplication();
    bool dropped = true;
    bool later = false;
    {
        EventLoopMainQueue queue;
        queue.post([&] { dropped = false; });
    }
    EventLoopMainQueue queue;
    queue.post([&] { later = true; });
    ASSERT_TRUE(testing::waitUntil([&] { return later; }));
    EXPECT_TRUE(dropped);
}

TEST(SerialWorkerQueue, RunsInOrderOnOneThreadOfItsOwn) {
    std::vector<int> order;
    std::vector<std::thread::id> threads;
    {
        SerialWorkerQueue queue("com.velmora.test");
        EXPECT_EQ(queue.label(), "com.velmora.test");
        for (int i = 0; i < 100; ++i) {
            queue.async([&, i] {
                order.push_back(i);
                threads.push_back(std::this_thread::get_id());
            });
        }
    }
    ASSERT_EQ(order.size(), 100U);
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(order[static_cast<std::size_t>(i)], i);
        EXPECT_EQ(threads[static_cast<std::size_t>(i)], threads[0]);
    }
    EXPECT_NE(threads[0], std::this_thread::get_id());
}

TEST(SerialWorkerQueue, NamesItsThread) {
    std::promise<std::string> name;
    SerialWorkerQueue queue("com.velmora.text-extraction");
    // The name is set by whoever makes the queue, so ask once the queue stands.
    queue.async([&] {
        std::array<char, 16> buffer{};
        ::pthread_getname_np(::pthread_self(), buffer.data(), buffer.size());
        name.set_value(buffer.data());
    });
    EXPECT_EQ(name.get_future().get(), "text-extraction");
}

TEST(SerialWorkerQueue, SurvivesWorkThatThrows) {
    std::promise<void> done;
    SerialWorkerQueue queue("com.velmora.test");
    queue.async([] { throw std::runtime_error("no"); });
    queue.async([&] { done.set_value(); });
    done.get_future().get();
}

TEST(SerialWorkerQueue, TakesWorkFromManyThreads) {
    int sum = 0;
    {
        SerialWorkerQueue queue("com.velmora.test");
        std::vector<std::thread> threads;
        for (int t = 0; t < 4; ++t) {
            threads.emplace_back([&] {
                for (int i = 0; i < 250; ++i) {
                    queue.async([&sum] { ++sum; });
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }
    EXPECT_EQ(sum, 1000);
}

}  // namespace
}  // namespace velmora
