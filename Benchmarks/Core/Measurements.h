// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>

namespace velmora::benchmarks {

/// What was measured, by name: seconds, or megabytes for the memory of a process.
using Measurements = std::map<std::string, double>;

/// How long each repetition of a benchmark runs; the shortest of them counts, so that many short
/// ones tell more on a busy machine than few long ones.
constexpr double repetitionSeconds = 0.1;

/// Registers the benchmarks of each group. The word list must be there.
void registerLoading(const std::string& wordListPath);
void registerSearching(const std::string& wordListPath);
void registerAligning(const std::string& wordListPath);

/// Runs this program again for what only a fresh process can tell: its memory with one way of
/// keeping the word list, and how long one lookup takes from its start to its end.
void measureProcesses(Measurements& measured);

/// The other side of `measureProcesses`: true where the arguments asked for it, and it was done.
bool runAsMeasuredProcess(int argc, char** argv, const std::string& wordListPath);

/// One line per figure: its goal, what was measured, and what the other ways took.
void printTable(const Measurements& measured);

}  // namespace velmora::benchmarks
