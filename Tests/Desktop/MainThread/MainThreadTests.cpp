// SPDX-License-Identifier: MIT
// Whatever goes wrong around the program, its main thread goes on looking for what happens: while
// it handles an event it waits for nobody who may keep silent. How long it takes is for the
// benchmark to tell.
#include <gtest/gtest.h>

#include <iostream>

#include "Tests/Desktop/MainThread/MainThreadFaults.h"
#include "Tests/Desktop/MainThread/MainThreadLog.h"
#include "Tests/Desktop/MainThread/MainThreadWaits.h"
#include "Tests/Support/TemporaryFolder.h"

namespace velmora::test {
namespace {

class MainThread : public ::testing::TestWithParam<MainThreadFault> {};

TEST_P(MainThread, waitsForNobody) {
    const testing::TemporaryFolder folder;
    const auto notes = folder.path() / "waits.txt";
    const auto stretches = mainThreadStretches(GetParam().logUnder(witnessEnvironment(notes)));
    ASSERT_FALSE(stretches.empty());
    const MainThreadStretch kept = longestKept(stretches);
    std::cout << "    at work for " << mostAtWork(stretches).work << " ms; with waits "
              << kept.kept() << " ms, " << kept.event << std::endl;

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
