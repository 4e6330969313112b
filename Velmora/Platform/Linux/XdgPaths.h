// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>

namespace velmora::xdg {

/// The user's base folders, from the environment or below the home folder; nothing where neither
/// can be told. A relative path in the environment is ignored. Nothing is created.

/// `$XDG_CONFIG_HOME`, else `~/.config`.
std::optional<std::filesystem::path> configHome();

/// `$XDG_DATA_HOME`, else `~/.local/share`.
std::optional<std::filesystem::path> dataHome();

/// `$XDG_CACHE_HOME`, else `~/.cache`.
std::optional<std::filesystem::path> cacheHome();

}  // namespace velmora::xdg
