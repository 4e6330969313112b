// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Loader/PlatformChoice.h"

#include <cstdlib>
#include <string_view>

namespace velmora {

std::optional<PlatformChoice> PlatformChoice::fromEnvironment(const Environment& environment) {
    constexpr std::string_view recorded = "recorded:";
    const std::string wanted = environment("VELMORA_PLATFORM").value_or(std::string());
    if (wanted == "x11") {
        return PlatformChoice{Kind::x11, {}};
    }
    if (wanted == "wayland") {
        return PlatformChoice{Kind::wayland, {}};
    }
    if (wanted.starts_with(recorded) && wanted.size() > recorded.size()) {
        return PlatformChoice{Kind::recorded, wanted.substr(recorded.size())};
    }
    if (!wanted.empty()) {
        return std::nullopt;
    }
    const bool wayland = environment("XDG_SESSION_TYPE") == "wayland";
    return PlatformChoice{wayland ? Kind::wayland : Kind::x11, {}};
}

std::optional<PlatformChoice> PlatformChoice::fromEnvironment() {
    return fromEnvironment([](const char* name) {
        const char* const value = std::getenv(name);
        return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
    });
}

}  // namespace velmora
