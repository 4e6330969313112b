// SPDX-License-Identifier: MIT
// Rests a real pointer on the words of a known text in real programs on a private desktop, and
// tells how many were right and how long they took.
//
//   benchmark_hover [--words N] [--idle SECONDS] [PROGRAM…]
//
// A PROGRAM that is called "nothing" is a whole screen without Chinese text.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

#include "Benchmarks/hover/HoverTable.h"
#include "Tests/Desktop/Support/PixelPrograms.h"

namespace {

struct Arguments {
    int words = 40;
    int idleSeconds = 60;
    std::vector<std::string> programs;
};

Arguments parse(int count, char** values) {
    Arguments arguments;
    for (int i = 1; i < count; ++i) {
        const std::string argument = values[i];
        if (argument == "--words" && i + 1 < count) {
            arguments.words = std::atoi(values[++i]);
        } else if (argument == "--idle" && i + 1 < count) {
            arguments.idleSeconds = std::atoi(values[++i]);
        } else {
            arguments.programs.push_back(argument);
        }
    }
    return arguments;
}

bool isWanted(const Arguments& arguments, const std::string& name) {
    const auto& wanted = arguments.programs;
    return wanted.empty() || std::find(wanted.begin(), wanted.end(), name) != wanted.end();
}

/// The figures of those programs that are wanted. Returns how many failed.
int measure(const Arguments& arguments, const std::vector<velmora::test::ReadProgram>& programs,
            bool areReadFromScreen, std::vector<velmora::benchmark::ProgramFigures>& table) {
    int failures = 0;
    for (const velmora::test::ReadProgram& program : programs) {
        if (!isWanted(arguments, program.name)) {
            continue;
        }
        std::fprintf(stderr, "    %s\n", program.name.c_str());
        table.push_back(
            velmora::benchmark::measureProgram(program, areReadFromScreen, arguments.words));
        for (const std::string& wrong : table.back().wrong) {
            std::fprintf(stderr, "      %s\n", wrong.c_str());
        }
        if (!table.back().failure.empty()) {
            std::fprintf(stderr, "      %s\n", table.back().failure.c_str());
            ++failures;
        }
    }
    return failures;
}

int run(const Arguments& arguments) {
    using namespace velmora;
    std::vector<benchmark::ProgramFigures> table;
    int failures = measure(arguments, test::ReadProgram::all(), false, table);
    failures += measure(arguments, test::pixelPrograms(), true, table);
    benchmark::printTable(table);
    if (isWanted(arguments, "nothing")) {
        const benchmark::NothingFigures nothing = benchmark::measureNothing();
        benchmark::printNothing(nothing);
        if (!nothing.failure.empty()) {
            std::fprintf(stderr, "      %s\n", nothing.failure.c_str());
            ++failures;
        }
    }
    if (arguments.idleSeconds > 0) {
        const benchmark::IdleFigures idle = benchmark::measureIdle(arguments.idleSeconds);
        long long switches = 0;
        for (const auto& [thread, count] : idle.switches) {
            std::fprintf(stderr, "      thread %s woke up %lld times\n", thread.c_str(), count);
            switches += count;
        }
        std::printf("\nIdle with the pointer still: %lld wake-ups in %d s, %.0f MB resident.\n",
                    switches, idle.seconds, idle.residentMegabytes);
    }
    return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace

int main(int count, char** values) {
    try {
        return run(parse(count, values));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "benchmark_hover: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
