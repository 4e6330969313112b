// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>

#include "Velmora/CommandLine/Core/CommandStreams.h"

namespace velmora {

/// `velmora lookup`: the word at a position of a text, or of each line of JSON. Returns the exit
/// status; throws `UsageError`.
int runLookupCommand(std::span<const std::string> arguments, CommandStreams& streams);

}  // namespace velmora
