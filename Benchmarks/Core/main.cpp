// SPDX-License-Identifier: MIT
// Measures the dictionary core on the real word list and prints one table. Arguments are those of
// Google Benchmark; --benchmark_filter picks groups.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "Benchmarks/Core/Measurements.h"
#include "VelmoraCore/BundledDictionary.h"

namespace {

/// Keeps the shortest time of each benchmark's repetitions: what the machine can do when nobody
/// else is using it. Tells on standard error how far it is.
class ShortestTimes : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& reports) override {
        for (const Run& run : reports) {
            if (run.error_occurred || run.run_type != Run::RT_Iteration) {
                continue;
            }
            const double seconds = run.cpu_accumulated_time / static_cast<double>(run.iterations);
            const auto known = measured_.emplace(run.run_name.function_name, seconds).first;
            known->second = std::min(known->second, seconds);
            std::fprintf(stderr, "\r%-60s", run.run_name.function_name.c_str());
        }
    }

    velmora::benchmarks::Measurements& measured() { return measured_; }

  private:
    velmora::benchmarks::Measurements measured_;
};

}  // namespace

int main(int argc, char** argv) {
    using namespace velmora::benchmarks;
    const std::string wordList = velmora::BundledDictionary::wordListPath();
    if (!std::filesystem::exists(wordList)) {
        std::fprintf(stderr, "%s: no word list, run scripts/fetch-dictionary\n", wordList.c_str());
        return 2;
    }
    if (runAsMeasuredProcess(argc, argv, wordList)) {
        return 0;
    }
    const bool everything = argc == 1;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    ShortestTimes times;
    if (everything) {
        measureProcesses(times.measured());
    }
    registerLoading(wordList);
    registerSearching(wordList);
    registerAligning(wordList);
    benchmark::RunSpecifiedBenchmarks(&times);
    std::fprintf(stderr, "\r%-60s\r", "");
    printTable(times.measured());
    return 0;
}
