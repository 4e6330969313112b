// SPDX-License-Identifier: MIT
#include "Benchmarks/hover/HoverTable.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <thread>

#include "Benchmarks/hover/ProcessFigures.h"
#include "Tests/Desktop/Support/HoverStage.h"
#include "Tests/Desktop/Support/LatinPicture.h"

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

/// Lets the program read from the screen once, which makes it prepare the forms of characters, and
/// waits for their file.
void prepareForms(test::HoverStage& stage) {
    stage.hover(0, 0);
    const std::filesystem::path forms =
        std::filesystem::path(stage.desktop().environment().at("XDG_CACHE_HOME")) /
        "velmora/glyphs.bin";
    if (!stage.desktop().waitUntil([&] { return std::filesystem::exists(forms); },
                                   std::chrono::minutes(3))) {
        throw std::runtime_error("the forms of characters do not get ready");
    }
    stage.leave();
    stage.hover(1, 0);
    stage.leave();
}

/// A character near the target, at whose place what was read for the target still serves.
std::size_t besideOf(const Target& target) {
    return target.position >= 2 ? target.position - 2 : target.position + 2;
}

/// How many captures of the screen it took.
int hoverTarget(test::HoverStage& stage, const Target& target, ProgramFigures& figures,
                std::vector<double>& milliseconds) {
    const test::Hover hover = stage.hover(target.line, target.position);
    const std::string expected = stage.text().word(target.line, target.position).matchedText;
    ++figures.hovers;
    if (hover.word() == expected) {
        ++figures.right;
    } else {
        figures.wrong.push_back(expected + " read as " + hover.word() + " in " +
                                hover.record.dump() + "\n" + stage.explain(hover.pointer));
    }
    if (hover.milliseconds) {
        milliseconds.push_back(*hover.milliseconds);
    }
    return hover.milliseconds ? hover.captures : 0;
}

/// The three columns about hovers that one capture was enough for; empty where the program's text
/// is not read from the screen.
std::string acceptedAtOnce(const ProgramFigures& figures) {
    if (figures.acceptedAtOnce.empty()) {
        return " | | ";
    }
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%zu | %.0f ms | %.0f ms",
                  figures.acceptedAtOnce.size(), quantile(figures.acceptedAtOnce, 0.5),
                  quantile(figures.acceptedAtOnce, 0.95));
    return text.data();
}

/// The milliseconds from the last dwell to its answer; nothing while there is none.
std::optional<double> lastAnswer(const test::RunningVelmora& velmora, std::size_t since) {
    const auto moments = velmora.moments();
    std::optional<std::int64_t> dwell;
    std::optional<double> answer;
    for (std::size_t i = since; i < moments.size(); ++i) {
        if (moments[i].name == "dwell") {
            dwell = moments[i].microseconds;
            answer.reset();
        } else if (moments[i].name == "answered" && dwell) {
            answer = static_cast<double>(moments[i].microseconds - *dwell) / 1000.0;
        }
    }
    return answer;
}

}  // namespace

ProgramFigures measureProgram(const test::ReadProgram& program, bool isReadFromScreen, int count) {
    ProgramFigures figures;
    figures.name = program.name;
    figures.toolkit = program.toolkit;
    try {
        test::HoverStage stage(program);
        figures.readyMilliseconds =
            static_cast<double>(stage.velmora().microsecondsToReady().value_or(0)) / 1000.0;
        if (isReadFromScreen) {
            prepareForms(stage);
        }
        for (const Target& target : targetsOf(stage.text(), count)) {
            if (hoverTarget(stage, target, figures, figures.milliseconds) == 1) {
                figures.acceptedAtOnce.push_back(figures.milliseconds.back());
            }
            if (isReadFromScreen) {
                hoverTarget(stage, {target.line, besideOf(target)}, figures,
                            figures.cachedMilliseconds);
            }
        }
        figures.residentMegabytes = residentMegabytes(stage.velmora().processes());
    } catch (const std::exception& error) {
        figures.failure = error.what();
    }
    return figures;
}

NothingFigures measureNothing() {
    NothingFigures figures;
    try {
        test::VirtualDesktop::Options options;
        options.width = test::LatinPicture::width;
        options.height = test::LatinPicture::height;
        test::VirtualDesktop desktop(options);
        desktop.enter();
        desktop.movePointer(2, 2);
        test::LatinPicture::show(desktop);
        test::RunningVelmora velmora(desktop);
        for (const Point place : test::LatinPicture::places()) {
            const std::size_t records = velmora.records().size();
            const std::size_t moments = velmora.moments().size();
            desktop.movePointer(static_cast<int>(place.x), static_cast<int>(place.y));
            desktop.waitUntil(
                [&] { return lastAnswer(velmora, moments) && velmora.records().size() > records; });
            const auto milliseconds = lastAnswer(velmora, moments);
            if (!milliseconds || velmora.records().size() <= records) {
                throw std::runtime_error("no answer");
            }
            figures.milliseconds.push_back(*milliseconds);
            figures.found += velmora.records().back().at("event") == "lookup" ? 1 : 0;
        }
    } catch (const std::exception& error) {
        figures.failure = error.what();
    }
    return figures;
}

void printNothing(const NothingFigures& figures) {
    if (!figures.failure.empty()) {
        std::printf("\nNo Chinese text on %d x %d: failed\n", test::LatinPicture::width,
                    test::LatinPicture::height);
        return;
    }
    std::printf(
        "\nNo Chinese text on %d x %d: %zu places, Chinese seen at %d, answer after %.0f ms "
        "(median), %.0f ms (p95), %.0f ms (longest).\n",
        test::LatinPicture::width, test::LatinPicture::height, figures.milliseconds.size(),
        figures.found, quantile(figures.milliseconds, 0.5), quantile(figures.milliseconds, 0.95),
        quantile(figures.milliseconds, 1));
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
        "| program | toolkit | words right | first | median | p95 | one capture was enough for | "
        "median | p95 | start to ready | memory |");
    std::puts("|---|---|--:|--:|--:|--:|--:|--:|--:|--:|--:|");
    std::vector<double> all;
    for (const ProgramFigures& each : figures) {
        if (!each.failure.empty()) {
            std::printf("| %s | %s | failed | | | | | | | | |\n", each.name.c_str(),
                        each.toolkit.c_str());
            continue;
        }
        all.insert(all.end(), each.milliseconds.begin(), each.milliseconds.end());
        std::printf(
            "| %s | %s | %d of %d | %.0f ms | %.0f ms | %.0f ms | %s | %.0f ms | %.0f MB |\n",
            each.name.c_str(), each.toolkit.c_str(), each.right, each.hovers,
            each.milliseconds.empty() ? 0 : each.milliseconds.front(),
            quantile(each.milliseconds, 0.5), quantile(each.milliseconds, 0.95),
            acceptedAtOnce(each).c_str(), each.readyMilliseconds, each.residentMegabytes);
        if (!each.cachedMilliseconds.empty()) {
            std::printf("| %s, from the cache | %s | | | %.0f ms | %.0f ms | | | | | |\n",
                        each.name.c_str(), each.toolkit.c_str(),
                        quantile(each.cachedMilliseconds, 0.5),
                        quantile(each.cachedMilliseconds, 0.95));
        }
    }
    if (figures.size() > 1) {
        std::printf("| all | | | | %.0f ms | %.0f ms | | | | | |\n", quantile(all, 0.5),
                    quantile(all, 0.95));
    }
}

}  // namespace velmora::benchmark
