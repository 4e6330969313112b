// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>

#include "Velmora/CommandLine/Core/CommandStreams.h"

namespace velmora {

/// `velmora align`: where a recognised line stands in reference texts. Returns the exit status;
/// throws `UsageError`.
int runAlignCommand(std::span<const std::string> arguments, CommandStreams& streams);

}  // namespace velmora
