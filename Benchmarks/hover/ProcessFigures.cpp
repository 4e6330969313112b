// SPDX-License-Identifier: MIT
#include "Benchmarks/hover/ProcessFigures.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace velmora::benchmark {

namespace {

/// The number behind a key of a status file; 0 where it is not there.
long long statusNumber(const std::filesystem::path& file, const std::string& key) {
    std::ifstream status(file);
    std::string line;
    while (std::getline(status, line)) {
        if (line.starts_with(key + ":")) {
            long long number = 0;
            std::istringstream(line.substr(key.size() + 1)) >> number;
            return number;
        }
    }
    return 0;
}

std::filesystem::path folderOf(pid_t process) {
    return std::filesystem::path("/proc") / std::to_string(process);
}

}  // namespace

double residentMegabytes(const std::vector<pid_t>& processes) {
    long long kilobytes = 0;
    for (const pid_t process : processes) {
        kilobytes += statusNumber(folderOf(process) / "status", "VmRSS");
    }
    return static_cast<double>(kilobytes) / 1024.0;
}

std::map<std::string, long long> voluntarySwitches(const std::vector<pid_t>& processes) {
    std::map<std::string, long long> switches;
    for (const pid_t process : processes) {
        std::error_code error;
        for (const auto& thread :
             std::filesystem::directory_iterator(folderOf(process) / "task", error)) {
            std::string name;
            std::getline(std::ifstream(thread.path() / "comm"), name);
            switches[thread.path().filename().string() + " " + name] =
                statusNumber(thread.path() / "status", "voluntary_ctxt_switches");
        }
    }
    return switches;
}

}  // namespace velmora::benchmark
