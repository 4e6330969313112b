// SPDX-License-Identifier: MIT
// Whatever goes wrong around the program, its main thread goes on looking for what happens: while
// it handles an event it waits for nobody who may keep silent. How long it takes exactly is for
// `scripts/benchmark main-thread` to tell.
#include <gtest/gtest.h>

#include <iostream>

#include "Tests/Desktop/MainThread/MainThreadFaults.h"
#include "Tests/Desktop/MainThread/MainThreadLog.h"
#include "Tests/Desktop/MainThread/MainThreadWaits.h"
#include "Tests/Support/TemporaryFolder.h"

namespace velmora::test {
namespace {

// What holds on a busy machine as well: the thread's own time alone counts for the one, and nothing
// that it waits for takes long, however slowly the others run. The time-outs of the bus, of names
// of hosts and of the speech daemon are seconds.
constexpr double mostWork = 120;  // Milliseconds.
constexpr double longestTime = 4000;

class MainThread : public ::testing::TestWithParam<MainThreadFault> {};

TEST_P(MainThread, waitsForNobody) {
    const testing::TemporaryFolder folder;
    const auto notes = folder.path() / "waits.txt";
    const auto stretches = mainThreadStretches(GetParam().logUnder(witnessEnvironment(notes)));
    ASSERT_FALSE(stretches.empty());
    const MainThreadStretch work = mostAtWork(stretches);
    const MainThreadStretch kept = longestKept(stretches);
    std::cout << "    at work for " << work.work << " ms; with waits " << kept.kept() << " ms, "
              << kept.event << std::endl;
    EXPECT_LT(work.work, mostWork) << work.event;
    EXPECT_LT(kept.kept(), longestTime) << kept.event;

    const std::vector<MainThreadWait> waits = mainThreadWaits(notes);
    // Windows come to no screen without a question to the display.
    EXPECT_TRUE(std::ranges::any_of(waits, &MainThreadWait::isForDisplay));
    for (const MainThreadWait& wait : waits) {
        EXPECT_FALSE(wait.isForOthers()) << wait.description();
    }
}

INSTANTIATE_TEST_SUITE_P(Faults, MainThread, ::testing::ValuesIn(mainThreadFaults()),
                         [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace velmora::test
