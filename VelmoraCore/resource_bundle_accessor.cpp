// SPDX-License-Identifier: MIT
#include "VelmoraCore/resource_bundle_accessor.h"

#include <cstdio>
#include <cstdlib>
#include <system_error>
#include <utility>

#ifndef VELMORA_BUILD_TIME_BUNDLE_PATH
#error "The build says where it puts the resource bundle: VELMORA_BUILD_TIME_BUNDLE_PATH"
#endif

namespace velmora {
namespace {

constexpr std::string_view bundleName = "Velmora_VelmoraCore.bundle";
constexpr int fatalStatus = 2;

std::filesystem::path executableFolder() {
    std::error_code error;
    const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::path() : executable.parent_path();
}

bool canBeOpened(const std::filesystem::path& folder) {
    std::error_code error;
    const std::filesystem::directory_iterator content(folder, error);
    return !error;
}

}  // namespace

ResourceBundle::ResourceBundle(std::filesystem::path folder) : folder_(std::move(folder)) {}

const ResourceBundle& ResourceBundle::module() {
    static const ResourceBundle bundle =
        require(executableFolder(), VELMORA_BUILD_TIME_BUNDLE_PATH);
    return bundle;
}

ResourceBundle ResourceBundle::require(const std::filesystem::path& executableFolder,
                                       const std::filesystem::path& buildTimePath) {
    if (auto found = find(executableFolder, buildTimePath)) {
        return *std::move(found);
    }
    std::fprintf(stderr, "%s\n", missingMessage(executableFolder, buildTimePath).c_str());
    std::exit(fatalStatus);
}

std::optional<ResourceBundle> ResourceBundle::find(const std::filesystem::path& executableFolder,
                                                   const std::filesystem::path& buildTimePath) {
    const std::filesystem::path candidates[] = {
        executableFolder / bundleName,
        (executableFolder / "../share/velmora" / bundleName).lexically_normal(), buildTimePath};
    for (const std::filesystem::path& candidate : candidates) {
        if (canBeOpened(candidate)) {
            return ResourceBundle(candidate);
        }
    }
    return std::nullopt;
}

std::string ResourceBundle::missingMessage(const std::filesystem::path& executableFolder,
                                           const std::filesystem::path& buildTimePath) {
    return "could not load resource bundle: from " + (executableFolder / bundleName).string() +
           " or " + buildTimePath.string();
}

std::optional<std::filesystem::path> ResourceBundle::path(std::string_view name,
                                                          std::string_view extension) const {
    std::filesystem::path file = folder_ / name;
    file += ".";
    file += extension;
    std::error_code error;
    return std::filesystem::exists(file, error) ? std::optional(file) : std::nullopt;
}

}  // namespace velmora
