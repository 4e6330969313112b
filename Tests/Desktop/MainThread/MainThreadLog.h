// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace velmora::test {

/// A stretch in which our program's main thread did not look for what happened meanwhile, as its
/// debug log tells it. Times are milliseconds.
struct MainThreadStretch {
    double at = 0;         ///< Since the start of the program, when it ended.
    double passed = 0;     ///< By the clock.
    double processor = 0;  ///< Of these the thread was at work; the rest it waited.
    long waits = 0;        ///< How often it waited for another program or for the disk.
    std::string event;     ///< What took the most of it.
};

/// All that a log tells, oldest first: those that were the longest until then, and those of more
/// than a frame.
std::vector<MainThreadStretch> mainThreadStretches(const std::string& log);

/// The one that kept the processor longest, and the one that took longest by the clock; stretches
/// of no length where there are none.
MainThreadStretch mostAtWork(const std::vector<MainThreadStretch>& stretches);
MainThreadStretch longest(const std::vector<MainThreadStretch>& stretches);

}  // namespace velmora::test
