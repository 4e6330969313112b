// SPDX-License-Identifier: MIT
// Uses the program on a private desktop while things go wrong around it, and tells for each what
// kept its main thread longest from looking for what happens. On a machine that has other work,
// run it at real-time priority (chrt -r 1).
//
//   benchmark_main-thread [FAULT…]
#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "Tests/Desktop/MainThread/MainThreadFaults.h"
#include "Tests/Desktop/MainThread/MainThreadLog.h"

int main(int count, char** values) {
    using namespace velmora::test;
    const std::vector<std::string> wanted(values + 1, values + count);
    int failures = 0;
    std::printf(
        "| while | longest at work, ms | longest in all, ms | its waits | its event |\n"
        "|---|---|---|---|---|\n");
    for (const MainThreadFault& fault : mainThreadFaults()) {
        if (!wanted.empty() && std::ranges::find(wanted, fault.name) == wanted.end()) {
            continue;
        }
        try {
            const auto stretches = mainThreadStretches(fault.logUnder());
            const MainThreadStretch work = mostAtWork(stretches);
            const MainThreadStretch all = longest(stretches);
            std::printf("| %s | %.1f | %.1f | %ld | %s |\n", fault.name.c_str(), work.processor,
                        all.passed, all.waits, all.event.c_str());
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s: %s\n", fault.name.c_str(), error.what());
            ++failures;
        }
        std::fflush(stdout);
    }
    return failures == 0 ? 0 : 1;
}
