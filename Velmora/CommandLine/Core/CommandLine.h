// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>

#include "Velmora/CommandLine/Core/CommandStreams.h"

namespace velmora {

/// Answers one call of `velmora`, its arguments without the program's name, and returns the exit
/// status. What needs the desktop replaces the process by the application part.
int runCommandLine(std::span<const std::string> arguments, CommandStreams& streams);

}  // namespace velmora
