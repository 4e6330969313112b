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
                        " %lf velmora.mainthread: %lf ms, %lf of the processor, %ld waits, %*d "
                        "preemptions, %n",
                        &seconds, &stretch.passed, &stretch.processor, &stretch.waits, &end) == 4 &&
            end > 0) {
            stretch.at = seconds * 1000;
            stretch.event = line.substr(static_cast<std::size_t>(end));
            result.push_back(stretch);
        }
    }
    return result;
}

MainThreadStretch mostAtWork(const std::vector<MainThreadStretch>& stretches) {
    const auto found =
        std::ranges::max_element(stretches, std::less<>(), &MainThreadStretch::processor);
    return found == stretches.end() ? MainThreadStretch{} : *found;
}

MainThreadStretch longest(const std::vector<MainThreadStretch>& stretches) {
    const auto found =
        std::ranges::max_element(stretches, std::less<>(), &MainThreadStretch::passed);
    return found == stretches.end() ? MainThreadStretch{} : *found;
}

}  // namespace velmora::test
