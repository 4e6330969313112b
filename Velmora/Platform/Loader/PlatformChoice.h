// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace velmora {

/// Which desktop the program works with.
struct PlatformChoice {
    enum class Kind { x11, wayland, recorded };
    using Environment = std::function<std::optional<std::string>(const char* name)>;

    Kind kind = Kind::x11;
    std::filesystem::path recording;  ///< The folder to play back, for `recorded`.

    /// By `VELMORA_PLATFORM` ("x11", "wayland" or "recorded:FOLDER"), else by the kind of session.
    /// Nothing where the variable holds something else.
    static std::optional<PlatformChoice> fromEnvironment(const Environment& environment);

    /// The same for the environment of this process.
    static std::optional<PlatformChoice> fromEnvironment();

    /// What to tell the user where the variable holds something else.
    static constexpr const char* wrongVariable =
        "VELMORA_PLATFORM must be x11, wayland or recorded:FOLDER";

    bool operator==(const PlatformChoice&) const = default;
};

}  // namespace velmora
