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
    std::vector<double> milliseconds;    ///< From the dwell timer to the popover's first frame.
    std::vector<double> acceptedAtOnce;  ///< Of these, where one capture of the screen was enough.
    std::vector<std::string> wrong;      ///< What was shown instead, for the log.
    std::vector<double> cachedMilliseconds;  ///< The same beside a place that was just read.
    double readyMilliseconds = 0;
    double residentMegabytes = 0;
};

/// Hovers the middle of `count` words in turn. Where the program's text is read from the screen,
/// this begins when the forms of characters are at hand, which are drawn once in a user's life,
/// and every word is followed by a character beside it.
ProgramFigures measureProgram(const test::ReadProgram& program, bool isReadFromScreen, int count);

/// How long it takes to find out that there is no Chinese text at the pointer, on a whole screen
/// with a photograph and English words.
struct NothingFigures {
    std::string failure;
    std::vector<double> milliseconds;  ///< From the dwell timer to the answer.
    int found = 0;                     ///< Places where Chinese was seen nonetheless.
};
NothingFigures measureNothing();
void printNothing(const NothingFigures& figures);

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
