// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <vector>

#include "Tests/Desktop/Support/ReadProgram.h"

namespace velmora::benchmark {

/// What hovering the words of the sample text in one program came to.
struct ProgramFigures {
    std::string name;
    std::string toolkit;
    std::string failure;  ///< Why there are no figures; empty where there are.
    int hovers = 0;
    int right = 0;
    std::vector<double> milliseconds;  ///< From the dwell timer to the popover's first frame.
    std::vector<std::string> wrong;    ///< What was shown instead, for the log.
    double readyMilliseconds = 0;
    double residentMegabytes = 0;
};

/// Hovers the middle of `count` words in turn.
ProgramFigures measureProgram(const test::ReadProgram& program, int count);

/// What our program does by itself while the pointer rests, over some seconds.
struct IdleFigures {
    int seconds = 0;
    std::map<std::string, long long> switches;  ///< Of the threads that woke up, by name.
    double residentMegabytes = 0;
};
IdleFigures measureIdle(int seconds);

/// The table, as Markdown on standard output.
void printTable(const std::vector<ProgramFigures>& figures);

}  // namespace velmora::benchmark
