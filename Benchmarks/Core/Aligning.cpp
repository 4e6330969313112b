// SPDX-License-Identifier: MIT
#include <benchmark/benchmark.h>

#include <optional>
#include <string>
#include <vector>

#include "Benchmarks/Core/Measurements.h"
#include "Benchmarks/Core/Samples.h"
#include "VelmoraCore/CharacterText.h"
#include "VelmoraCore/OCRTextCorrector.h"

namespace velmora::benchmarks {
namespace {

constexpr std::size_t referenceLength = 10000;
constexpr std::size_t lineLength = 20;

/// A line of the reference in which every fifth character is another.
std::string misread(const std::string& reference) {
    const CharacterText characters(reference);
    std::string line;
    for (std::size_t index = 0; index < lineLength; ++index) {
        line += index % 5 == 0 ? "某" : std::string(characters[referenceLength / 2 + index]);
    }
    return line;
}

/// The rule written down literally, one character after the other.
std::size_t literalBest(const std::string& line, const std::string& reference) {
    const CharacterText lineCharacters(line);
    const CharacterText characters(reference);
    std::size_t best = 0;
    std::size_t bestStart = 0;
    for (std::size_t start = 0; start + lineCharacters.count() <= characters.count(); ++start) {
        std::size_t matches = 0;
        for (std::size_t index = 0; index < lineCharacters.count(); ++index) {
            matches += static_cast<std::size_t>(characters[start + index] == lineCharacters[index]);
        }
        if (matches > best) {
            best = matches;
            bestStart = start;
        }
    }
    return bestStart;
}

}  // namespace

void registerAligning(const std::string& path) {
    const std::vector<std::string> references{wordSalad(path, referenceLength)};
    const std::string line = misread(references[0]);
    const auto add = [](const char* name, auto run) {
        benchmark::RegisterBenchmark(name, run)
            ->Unit(benchmark::kMicrosecond)
            ->MinTime(repetitionSeconds)
            ->Repetitions(5);
    };
    add("align/core", [=](benchmark::State& state) {
        for (auto _ : state) {
            benchmark::DoNotOptimize(OCRTextCorrector::align(line, references));
        }
    });
    add("align/literal", [=](benchmark::State& state) {
        for (auto _ : state) {
            benchmark::DoNotOptimize(literalBest(line, references[0]));
        }
    });
}

}  // namespace velmora::benchmarks
