// SPDX-License-Identifier: MIT
#include "Tests/Desktop/MainThread/MainThreadLog.h"

#include <algorithm>
#include <cstdio>
#include <sstream>

namespace velmora::test {

std::vector<MainThreadStretch> mainThreadStretches(const std::string& log) {
    std::vector<MainThreadStretch> result;
    std::istringstream lines(log);
    for (std::string line; std::getline(lines, line);) {
        MainThreadStretch stretch;
        int end = 0;
        double seconds = 0;
        if (std::sscanf(line.c_str(),
                        " %lf velmora.mainthread: %lf ms: %lf at work, %lf in %ld waits, %lf "
                        "without a processor, %n",
                        &seconds, &stretch.passed, &stretch.work, &stretch.waited, &stretch.waits,
                        &stretch.queued, &end) == 6 &&
            end > 0) {
            stretch.at = seconds * 1000;
            stretch.event = line.substr(static_cast<std::size_t>(end));
            result.push_back(stretch);
        }
    }
    return result;
}

MainThreadStretch mostAtWork(const std::vector<MainThreadStretch>& stretches) {
    const auto found = std::ranges::max_element(stretches, std::less<>(), &MainThreadStretch::work);
    return found == stretches.end() ? MainThreadStretch{} : *found;
}

MainThreadStretch longestKept(const std::vector<MainThreadStretch>& stretches) {
    const auto found = std::ranges::max_element(stretches, std::less<>(), &MainThreadStretch::kept);
    return found == stretches.end() ? MainThreadStretch{} : *found;
}

}  // namespace velmora::test
