// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/IdleSteps.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>
#include <string>

#include "Tests/Support/EventLoop.h"

namespace velmora {
namespace {

class IdleStepsTest : public ::testing::Test {
  protected:
    void SetUp() override { testing::coreApplication(); }

    std::function<void()> writing(const std::string& letter) {
        return [this, letter] { done += letter; };
    }

    std::string done;
    IdleSteps steps;
};

TEST_F(IdleStepsTest, TakesThemInOrderAndLater) {
    steps.add({writing("a"), writing("b")});
    steps.add({writing("c")});
    EXPECT_EQ(done, "");
    ASSERT_TRUE(testing::waitUntil([&] { return done.size() == 3; }));
    EXPECT_EQ(done, "abc");
    steps.add({writing("d")});
    ASSERT_TRUE(testing::waitUntil([&] { return done.size() == 4; }));
}

TEST_F(IdleStepsTest, LetWhatHappensMeanwhileComeFirst) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
    QSocketNotifier arrival(ends[0], QSocketNotifier::Read);
    QObject::connect(&arrival, &QSocketNotifier::activated, &arrival, [&] {
        char letter = 0;
        ASSERT_EQ(::read(ends[0], &letter, 1), 1);
        done += '!';
    });
    const auto arriving = [&] {
        done += '.';
        ASSERT_EQ(::write(ends[1], "x", 1), 1);
    };
    steps.add({arriving, arriving, arriving});
    ASSERT_TRUE(testing::waitUntil([&] { return done.size() == 6; }));
    EXPECT_EQ(done, ".!.!.!");
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST_F(IdleStepsTest, AStepMayAddOthers) {
    steps.add({[this] { steps.add({writing("b")}); }, writing("a")});
    ASSERT_TRUE(testing::waitUntil([&] { return done.size() == 2; }));
    EXPECT_EQ(done, "ab");
}

TEST_F(IdleStepsTest, WhatIsLeftGoesWithIt) {
    {
        IdleSteps shortLived;
        shortLived.add({writing("x")});
    }
    steps.add({writing("a")});
    ASSERT_TRUE(testing::waitUntil([&] { return !done.empty(); }));
    EXPECT_EQ(done, "a");
}

}  // namespace
}  // namespace velmora
