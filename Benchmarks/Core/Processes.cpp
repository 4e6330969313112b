// SPDX-License-Identifier: MIT
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string_view>

#include "Benchmarks/Core/Measurements.h"
#include "Benchmarks/Core/Rival.h"
#include "VelmoraCore/BundledDictionary.h"
#include "VelmoraCore/LookupEngine.h"

extern char** environ;

namespace velmora::benchmarks {
namespace {

constexpr int runs = 5;

std::filesystem::path ownExecutable() {
    return std::filesystem::read_symlink("/proc/self/exe");
}

/// Runs a program to its end and gives back its output and the seconds it took.
std::pair<std::string, double> run(std::vector<std::string> arguments) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        return {};
    }
    std::vector<char*> pointers;
    for (std::string& argument : arguments) {
        pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, ends[0]);
    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    const int error = posix_spawn(&child, pointers[0], &actions, nullptr, pointers.data(), environ);
    close(ends[1]);
    posix_spawn_file_actions_destroy(&actions);
    std::string output;
    std::array<char, 4096> buffer{};
    for (ssize_t count = 0; (count = read(ends[0], buffer.data(), buffer.size())) > 0;) {
        output.append(buffer.data(), static_cast<std::size_t>(count));
    }
    close(ends[0]);
    if (error == 0) {
        waitpid(child, nullptr, 0);
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    return {output, taken.count()};
}

double residentMegabytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) {
            return std::strtod(line.c_str() + 6, nullptr) / 1024;
        }
    }
    return 0;
}

/// Keeps the word list in one way while `residentMegabytes` is asked.
double residentWith(std::string_view way, const std::string& path) {
    if (way == "core") {
        const auto loaded = BundledDictionary::load(path);
        return loaded.error ? 0 : residentMegabytes();
    }
    std::unique_ptr<Rival> rival;
    if (way == "objects") {
        rival = makeObjectDictionary(path);
    } else if (way == "hash map") {
        rival = makeHashMapDictionary(path);
    } else if (way == "marisa") {
        rival = makeMarisaDictionary(path);
    }
    return residentMegabytes();
}

double shortestRun(const std::vector<std::string>& arguments) {
    double best = 1e9;
    for (int count = 0; count < runs; ++count) {
        best = std::min(best, run(arguments).second);
    }
    return best;
}

}  // namespace

void measureProcesses(Measurements& measured) {
    const std::string self = ownExecutable().string();
    for (const char* way : {"nothing", "core", "objects", "hash map", "marisa"}) {
        const std::string output = run({self, "--resident", way}).first;
        measured[std::string("resident/") + way] = std::strtod(output.c_str(), nullptr);
    }
    measured["process/core"] = shortestRun({self, "--one-lookup"});
    const std::string command = (ownExecutable().parent_path() / "velmora").string();
    if (std::filesystem::exists(command)) {
        measured["process/command"] = shortestRun({command, "lookup", "学习"});
    }
}

bool runAsMeasuredProcess(int argc, char** argv, const std::string& path) {
    if (argc == 3 && std::string_view(argv[1]) == "--resident") {
        std::printf("%.3f\n", residentWith(argv[2], path));
        return true;
    }
    if (argc == 2 && std::string_view(argv[1]) == "--one-lookup") {
        const auto result = LookupEngine(BundledDictionary::load(path).store).lookup("学习", 0);
        std::printf("%s\n", result ? result->entry.pinyinMarked.c_str() : "nothing");
        return true;
    }
    return false;
}

}  // namespace velmora::benchmarks
