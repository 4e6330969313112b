// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace velmora::test {

/// A stretch in which our program's main thread did not look for what happened meanwhile, as its
/// debug log tells it. Times are milliseconds.
struct MainThreadStretch {
    double at = 0;      ///< Since the start of the program, when it ended.
    double passed = 0;  ///< By the clock: the sum of the following three.
    double work = 0;    ///< The thread was at work.
    double waited = 0;  ///< It waited for another program or for the disk.
    double queued = 0;  ///< It was ready, and other programs had all processors.
    long waits = 0;     ///< How often it waited.
    std::string event;  ///< What took the most of it.

    /// How long the program itself kept the thread, on however busy a machine.
    double kept() const { return work + waited; }
};

/// All that a log tells, oldest first: those that were the longest until then, and those of more
/// than a frame.
std::vector<MainThreadStretch> mainThreadStretches(const std::string& log);

/// The one that was at work longest, and the one that was kept longest; stretches of no length
/// where there are none.
MainThreadStretch mostAtWork(const std::vector<MainThreadStretch>& stretches);
MainThreadStretch longestKept(const std::vector<MainThreadStretch>& stretches);

}  // namespace velmora::test
