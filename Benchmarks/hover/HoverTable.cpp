// SPDX-License-Identifier: MIT
#include "Benchmarks/hover/HoverTable.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <stdexcept>
#include <thread>

#include "Benchmarks/hover/ProcessFigures.h"
#include "Tests/Desktop/Support/HoverStage.h"

namespace velmora::benchmark {

namespace {

/// One character to hover: the middle one of a word.
struct Target {
    std::size_t line = 0;
    std::size_t position = 0;
};

/// The words of the lines in turn, so that the pointer comes from another line each time.
std::vector<Target> targetsOf(const test::SampleText& text, int count) {
    std::vector<Target> targets;
    for (std::size_t word = 0; targets.size() < static_cast<std::size_t>(count) && word < 14;
         ++word) {
        for (std::size_t line = 0; line < text.lines().size(); ++line) {
            const std::vector<LookupResult> words = text.words(line);
            if (word < words.size()) {
                const MatchedTextRange range = words[word].range;
                targets.push_back({line, static_cast<std::size_t>((range.start + range.end) / 2)});
            }
        }
    }
    targets.resize(std::min(targets.size(), static_cast<std::size_t>(count)));
    return targets;
}

double quantile(std::vector<double> values, double part) {
    if (values.empty()) {
        return 0;
    }
    std::sort(values.begin(), values.end());
    const double index = std::ceil(part * static_cast<double>(values.size())) - 1;
    return values[static_cast<std::size_t>(std::max(index, 0.0))];
}

}  // namespace

ProgramFigures measureProgram(const test::ReadProgram& program, int count) {
    ProgramFigures figures;
    figures.name = program.name;
    figures.toolkit = program.toolkit;
    try {
        test::HoverStage stage(program);
        figures.readyMilliseconds =
            static_cast<double>(stage.velmora().microsecondsToReady().value_or(0)) / 1000.0;
        for (const Target& target : targetsOf(stage.text(), count)) {
            const test::Hover hover = stage.hover(target.line, target.position);
            const std::string expected =
                stage.text().word(target.line, target.position).matchedText;
            ++figures.hovers;
            if (hover.word() == expected) {
                ++figures.right;
            } else {
                figures.wrong.push_back(expected + " read as " + hover.word() + " in " +
                                        hover.record.dump() + "\n" + stage.explain(hover.pointer));
            }
            if (hover.milliseconds) {
                figures.milliseconds.push_back(*hover.milliseconds);
            }
        }
        figures.residentMegabytes = residentMegabytes(stage.velmora().processes());
    } catch (const std::exception& error) {
        figures.failure = error.what();
    }
    return figures;
}

IdleFigures measureIdle(int seconds) {
    test::HoverStage stage(test::ReadProgram::named("mousepad"));
    stage.hover(0, 0);
    stage.leave();
    // The last dwell and what it started are over once their record is there.
    stage.desktop().waitUntil([&] { return stage.velmora().records().size() >= 2; });
    // The windows' toolkit drops pictures that nobody uses any more half a minute later, twice.
    std::this_thread::sleep_for(std::chrono::seconds(75));
    const std::vector<pid_t> processes = stage.velmora().processes();
    auto before = voluntarySwitches(processes);
    std::this_thread::sleep_for(std::chrono::seconds(seconds));
    IdleFigures figures{seconds, {}, residentMegabytes(processes)};
    for (const auto& [thread, switches] : voluntarySwitches(processes)) {
        if (switches != before[thread]) {
            figures.switches[thread] = switches - before[thread];
        }
    }
    return figures;
}

void printTable(const std::vector<ProgramFigures>& figures) {
    std::puts(
        "| program | toolkit | words right | first | median | p95 | start to ready | memory |");
    std::puts("|---|---|--:|--:|--:|--:|--:|--:|");
    std::vector<double> all;
    for (const ProgramFigures& each : figures) {
        if (!each.failure.empty()) {
            std::printf("| %s | %s | failed | | | | | |\n", each.name.c_str(),
                        each.toolkit.c_str());
            continue;
        }
        all.insert(all.end(), each.milliseconds.begin(), each.milliseconds.end());
        std::printf("| %s | %s | %d of %d | %.0f ms | %.0f ms | %.0f ms | %.0f ms | %.0f MB |\n",
                    each.name.c_str(), each.toolkit.c_str(), each.right, each.hovers,
                    each.milliseconds.empty() ? 0 : each.milliseconds.front(),
                    quantile(each.milliseconds, 0.5), quantile(each.milliseconds, 0.95),
                    each.readyMilliseconds, each.residentMegabytes);
    }
    if (figures.size() > 1) {
        std::printf("| all | | | | %.0f ms | %.0f ms | | |\n", quantile(all, 0.5),
                    quantile(all, 0.95));
    }
}

}  // namespace velmora::benchmark
