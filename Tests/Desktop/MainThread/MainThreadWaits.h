// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "Tests/Support/VirtualDesktop/ChildProcess.h"

namespace velmora::test {

/// A time that our program's main thread slept while it was handling events, as the witness tells
/// that is loaded into it.
struct MainThreadWait {
    std::string kind;  ///< "poll", "socket", "condition", "process", …
    double milliseconds = 0;
    std::vector<std::string> callers;  ///< "library(function)", those nearest to the wait first.

    /// It waited for the display, whose answers the toolkit cannot do without.
    bool isForDisplay() const;

    /// It waited for another thread of the program to do something, and that not to bring an
    /// answer from another program.
    bool isForOwnThread() const;

    /// The toolkit told those who serve assistive programs of our windows. It does that by calls
    /// that block, right after all of them were asked and did answer.
    bool isForAssistants() const;

    /// Whom nobody can make answer: another program, a server, a new process, the disk, the clock.
    bool isForOthers() const { return !isForDisplay() && !isForOwnThread() && !isForAssistants(); }

    std::string description() const;
};

/// What a program needs in its environment to have the witness write to this file.
ChildProcess::Environment witnessEnvironment(const std::filesystem::path& notes);

/// All that the witness wrote of the time between the begin and the end of the event loop.
std::vector<MainThreadWait> mainThreadWaits(const std::filesystem::path& notes);

}  // namespace velmora::test
