// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "Velmora/CommandLine/Core/CommandStreams.h"

namespace velmora {

std::string_view autostartHelp();

/// Lets the program start with the desktop session or not, by an entry in the folder `autostart` of
/// the user's configuration. Answers the exit status: 0 done, or on; 1 off. Throws `UsageError` for
/// wrong arguments and where the entry cannot be written.
/// @param configuration The user's configuration folder.
/// @param program What the entry starts.
int runAutostartCommand(std::span<const std::string> arguments,
                        const std::filesystem::path& configuration,
                        const std::filesystem::path& program, CommandStreams& streams);

}  // namespace velmora
