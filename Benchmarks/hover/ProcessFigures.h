// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

namespace velmora::benchmark {

/// The resident memory of all these processes together, in MB of 2^20 bytes.
double residentMegabytes(const std::vector<pid_t>& processes);

/// How often each thread of these processes went to sleep by itself since it started, by
/// "process number and name".
std::map<std::string, long long> voluntarySwitches(const std::vector<pid_t>& processes);

}  // namespace velmora::benchmark
