// SPDX-License-Identifier: MIT
#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>

#include "Benchmarks/Core/Measurements.h"
#include "Benchmarks/Core/Rival.h"
#include "VelmoraCore/BundledDictionary.h"
#include "VelmoraCore/Utf8.h"

namespace velmora::benchmarks {
namespace {

void lineEnds(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        std::size_t lines = 0;
        const char* const end = text.data() + text.size();
        for (const char* at = text.data(); at < end; ++lines) {
            const void* const found = std::memchr(at, '\n', static_cast<std::size_t>(end - at));
            at = found == nullptr ? end : static_cast<const char*>(found) + 1;
        }
        benchmark::DoNotOptimize(lines);
    }
}

void loadRival(benchmark::State& state, std::unique_ptr<Rival> (*make)(const std::string&),
               const std::string& path) {
    for (auto _ : state) {
        std::unique_ptr<Rival> rival = make(path);
        benchmark::DoNotOptimize(rival.get());
        state.PauseTiming();
        rival.reset();
        state.ResumeTiming();
    }
}

void loadStore(benchmark::State& state, const std::string& path) {
    for (auto _ : state) {
        BundledDictionary::Loaded loaded = BundledDictionary::load(path);
        benchmark::DoNotOptimize(loaded.store.get());
        state.PauseTiming();
        loaded.store.reset();
        state.ResumeTiming();
    }
}

}  // namespace

void registerLoading(const std::string& path) {
    const std::string text = fileText(path);
    const auto add = [](const char* name, auto run) {
        benchmark::RegisterBenchmark(name, run)
            ->Unit(benchmark::kMillisecond)
            ->MinTime(repetitionSeconds)
            ->Repetitions(5);
    };
    add("load/line ends", [text](benchmark::State& state) { lineEnds(state, text); });
    add("load/validate", [text](benchmark::State& state) {
        for (auto _ : state) {
            benchmark::DoNotOptimize(isValidUtf8(text));
        }
    });
    add("load/core", [path](benchmark::State& state) { loadStore(state, path); });
    add("load/objects",
        [path](benchmark::State& state) { loadRival(state, makeObjectDictionary, path); });
    add("load/hash map",
        [path](benchmark::State& state) { loadRival(state, makeHashMapDictionary, path); });
    add("load/marisa",
        [path](benchmark::State& state) { loadRival(state, makeMarisaDictionary, path); });
}

}  // namespace velmora::benchmarks
