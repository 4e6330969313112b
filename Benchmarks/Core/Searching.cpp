// SPDX-License-Identifier: MIT
#include <benchmark/benchmark.h>

#include <functional>
#include <memory>

#include "Benchmarks/Core/Measurements.h"
#include "Benchmarks/Core/Rival.h"
#include "Benchmarks/Core/Samples.h"
#include "VelmoraCore/BundledDictionary.h"
#include "VelmoraCore/LookupEngine.h"

namespace velmora::benchmarks {
namespace {

constexpr std::size_t textLength = 20000;
constexpr std::size_t selectionLength = 2000;
constexpr std::size_t shortLength = 48;
/// A stride without a common divisor with the lengths: every position has its turn, none follows
/// its neighbour.
constexpr std::size_t stride = 7919;

template <typename Search>
void everyPosition(benchmark::State& state, std::size_t length, Search search) {
    std::size_t position = 0;
    for (auto _ : state) {
        position = (position + stride) % length;
        benchmark::DoNotOptimize(search(position));
    }
}

template <typename Run>
void add(const char* name, Run run) {
    benchmark::RegisterBenchmark(name, run)->MinTime(repetitionSeconds)->Repetitions(5);
}

using MakeRival = std::unique_ptr<Rival> (*)(const std::string&);

void addRival(const char* name, MakeRival make, const std::string& path) {
    add(name, [make, path](benchmark::State& state) {
        static std::map<MakeRival, std::shared_ptr<Rival>> made;
        auto& rival = made[make];
        if (!rival) {
            rival = make(path);
        }
        const std::string text = runningText(textLength);
        const std::vector<std::size_t> starts = scalarStarts(text);
        everyPosition(state, textLength, [&](std::size_t position) {
            return rival->longestCovering(text, starts, position);
        });
    });
}

void addStore(const std::shared_ptr<const DictionaryStore>& store) {
    add("find/core", [store](benchmark::State& state) {
        const CharacterText text(runningText(textLength));
        everyPosition(state, textLength, [&](std::size_t position) {
            return store->findLongestCovering(text, static_cast<long long>(position));
        });
    });
    add("find split/core", [store](benchmark::State& state) {
        const std::string text = runningText(shortLength);
        everyPosition(state, shortLength, [&](std::size_t position) {
            return store->findLongestCovering(CharacterText(text),
                                              static_cast<long long>(position));
        });
    });
    add("match/core", [store](benchmark::State& state) {
        const CharacterText text(runningText(textLength));
        everyPosition(state, textLength, [&](std::size_t position) {
            return store->longestMatchCovering(text, static_cast<long long>(position));
        });
    });
}

void addEngine(const std::shared_ptr<const DictionaryStore>& store) {
    add("lookup/core", [store](benchmark::State& state) {
        const LookupEngine engine(store);
        const std::string text = runningText(shortLength);
        everyPosition(state, shortLength, [&](std::size_t position) {
            return engine.lookup(text, static_cast<long long>(position));
        });
    });
    add("lookup long/core", [store](benchmark::State& state) {
        const LookupEngine engine(store);
        const CharacterText text(runningText(textLength));
        everyPosition(state, textLength, [&](std::size_t position) {
            return engine.lookup(text, static_cast<long long>(position));
        });
    });
    add("segment/core", [store](benchmark::State& state) {
        // A page of text: what somebody selects at most.
        const LookupEngine engine(store);
        const std::string text = runningText(selectionLength);
        for (auto _ : state) {
            benchmark::DoNotOptimize(engine.lookups(text));
        }
    });
    add("split/core", [](benchmark::State& state) {
        const std::string text = runningText(textLength);
        for (auto _ : state) {
            benchmark::DoNotOptimize(CharacterText(text));
        }
    });
}

}  // namespace

void registerSearching(const std::string& path) {
    const auto store = BundledDictionary::load(path).store;
    addStore(store);
    addEngine(store);
    addRival("find/objects", makeObjectDictionary, path);
    addRival("find/hash map", makeHashMapDictionary, path);
    addRival("find/marisa", makeMarisaDictionary, path);
}

}  // namespace velmora::benchmarks
