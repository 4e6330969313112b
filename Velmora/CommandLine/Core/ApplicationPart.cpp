// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Core/ApplicationPart.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <vector>

#include "Velmora/CommandLine/Core/UsageError.h"

namespace velmora {

namespace {

constexpr std::array<std::string_view, 9> applicationCommands{
    "probe",  "recognize",   "doctor", "settings", "onboarding",
    "toggle", "diagnostics", "quit",   "autostart"};

std::filesystem::path applicationPath() {
    std::error_code error;
    const auto executable = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) {
        throw UsageError("the place of this program cannot be found: " + error.message());
    }
    const auto folder = executable.parent_path();
    for (const auto& candidate :
         {folder / "velmora-app", folder.parent_path() / "libexec/velmora/velmora-app",
          folder.parent_path() / "libexec/velmora-app"}) {
        if (std::filesystem::is_regular_file(candidate, error)) {
            return candidate;
        }
    }
    throw UsageError("the desktop application is not installed: there is no " +
                     (folder / "velmora-app").string());
}

}  // namespace

bool belongsToApplication(std::string_view command) {
    return std::ranges::find(applicationCommands, command) != applicationCommands.end();
}

void executeApplicationPart(std::span<const std::string> arguments) {
    std::string path = applicationPath().string();
    std::vector<std::string> copies(arguments.begin(), arguments.end());
    std::vector<char*> pointers{path.data()};
    for (std::string& copy : copies) {
        pointers.push_back(copy.data());
    }
    pointers.push_back(nullptr);
    execv(path.c_str(), pointers.data());
    throw UsageError(path + " cannot be executed: " + std::strerror(errno));
}

}  // namespace velmora
