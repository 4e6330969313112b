// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/XdgPaths.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

namespace velmora::xdg {

namespace {

std::optional<std::filesystem::path> absolutePath(const char* text) {
    if (text == nullptr || *text != '/') {
        return std::nullopt;
    }
    return std::filesystem::path(text);
}

std::optional<std::filesystem::path> home() {
    if (const auto fromEnvironment = absolutePath(std::getenv("HOME"))) {
        return fromEnvironment;
    }
    std::array<char, 4096> buffer{};
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 ||
        found == nullptr) {
        return std::nullopt;
    }
    return absolutePath(found->pw_dir);
}

std::optional<std::filesystem::path> folder(const char* variable, const char* belowHome) {
    if (const auto given = absolutePath(std::getenv(variable))) {
        return given;
    }
    const auto homeFolder = home();
    return homeFolder ? std::optional(*homeFolder / belowHome) : std::nullopt;
}

}  // namespace

std::optional<std::filesystem::path> configHome() {
    return folder("XDG_CONFIG_HOME", ".config");
}

std::optional<std::filesystem::path> dataHome() {
    return folder("XDG_DATA_HOME", ".local/share");
}

std::optional<std::filesystem::path> cacheHome() {
    return folder("XDG_CACHE_HOME", ".cache");
}

}  // namespace velmora::xdg
