// SPDX-License-Identifier: MIT
// Uses the program on a private desktop while things go wrong around it, and tells for each what
// kept its main thread longest from looking for what happens: for how long it was at work, for how
// long it was kept together with its waits for others, and, apart from that, for how long it was
// ready and other programs had all processors.
//
//   benchmark_main-thread [--all] [FAULT…]
//
// With --all every stretch that the program's log has goes to standard error.
#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "Tests/Desktop/MainThread/MainThreadFaults.h"
#include "Tests/Desktop/MainThread/MainThreadLog.h"

namespace velmora::test {
namespace {

void print(const std::string& name, const std::vector<MainThreadStretch>& stretches) {
    const MainThreadStretch kept = longestKept(stretches);
    std::printf("| %s | %.1f | %.1f | %.1f | %ld | %.1f | %s |\n", name.c_str(),
                mostAtWork(stretches).work, kept.kept(), kept.waited, kept.waits, kept.queued,
                kept.event.c_str());
    std::fflush(stdout);
}

void printAll(const std::vector<MainThreadStretch>& stretches) {
    for (const MainThreadStretch& each : stretches) {
        std::fprintf(
            stderr, "%8.0f ms: %5.1f at work, %5.1f in %3ld waits, %5.1f without a processor, %s\n",
            each.at, each.work, each.waited, each.waits, each.queued, each.event.c_str());
    }
}

int measure(std::vector<std::string> wanted) {
    const bool tellsAll = std::erase(wanted, "--all") > 0;
    int failures = 0;
    std::printf(
        "| while | at work, ms | with waits, ms | of them waited, ms | waits | no processor, ms | "
        "event |\n"
        "|---|---|---|---|---|---|---|\n");
    for (const MainThreadFault& fault : mainThreadFaults()) {
        if (!wanted.empty() && std::ranges::find(wanted, fault.name) == wanted.end()) {
            continue;
        }
        try {
            const auto stretches = mainThreadStretches(fault.logUnder({}));
            print(fault.name, stretches);
            if (tellsAll) {
                printAll(stretches);
            }
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s: %s\n", fault.name.c_str(), error.what());
            ++failures;
        }
    }
    return failures == 0 ? 0 : 1;
}

}  // namespace
}  // namespace velmora::test

int main(int count, char** values) {
    return velmora::test::measure({values + 1, values + count});
}
